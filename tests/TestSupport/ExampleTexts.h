#pragma once

// The texts of the example tree (examples/localization, with examples/localization-alt as the
// alternative directory) under the parameters count=3 and folders=2. Every layer that reads the
// tree walks this one table: the engine's pipeline, the loaded module, its threads and locmgr.

#include <cstdint>

namespace LocalizationManager::Testing {

struct ExampleText {
    const char* cultureName;  // As locmgr reads it; the next two fields are what it yields.
    std::uint32_t languageId;
    const char* firstSubtag;
    const char* scope;
    const char* key;
    const char* text;
};

inline constexpr const char* kExampleCount = "3";
inline constexpr const char* kExampleFolders = "2";

inline constexpr ExampleText kExampleTexts[] = {
    // The Russian rule file decides the forms.
    {"ru", 26, "", "download", "summary", "3 файла в 2 папках."},
    {"ru", 26, "", "download", "status", "Загружено: 3 файла."},
    {"ru", 26, "", "settings", "limit", "Хранить в списке не более 3 загрузок"},
    // The alternative directory's file replaces the root's for every German culture.
    {"de", 12, "", "download", "done", "Fertig! 🎉"},
    {"de-AT", 12, "AT", "download", "done", "Fertig! 🎉"},
    {"de", 12, "", "download", "windowTitle", "Herunterladen – File Courier Enterprise"},
    {"de-AT", 12, "AT", "download", "windowTitle", "Herunterladen – File Courier Enterprise"},
    {"de", 12, "", "settings", "resetConfirm", "Einstellungen von File Courier zurücksetzen?"},
    // en-US has its own settings, and nothing else: download falls back to "neutral". Keys
    // match in any case.
    {"en-US", 7, "US", "settings", "THEME", "Color scheme"},
    {"en-US", 7, "US", "download", "windowTitle", "Download – File Courier"},
    {"en-US", 7, "US", "download", "cleanup", "3 files were removed from 2 folders."},
    {"en-GB", 7, "GB", "settings", "theme", "Colour scheme"},
    {"en-GB", 7, "GB", "download", "status", "Loaded 3 files."},
    // A grouped culture name, read from the en-au folder.
    {"anz", 7, "au", "download", "done", "Download complete – good on ya 🎉"},
    // Serbian (Latin) uses its built-in three forms.
    {"sr-Latn", 30, "", "download", "summary", "3 datoteke, broj fascikli: 2."},
    {"sr-Latn", 30, "", "download", "status", "Preuzeto: 3 datoteke."},
    {"sr-Latn", 30, "", "settings", "title", "Podešavanja"},
    // Right to left, with six plural forms.
    {"ar", 0, "", "download", "status", "تم تنزيل 3 ملفات."},
};

}  // namespace LocalizationManager::Testing
