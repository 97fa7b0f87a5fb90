#pragma once

// Texts in a few lines: the module loaded, its manager and culture converter made, and texts
// handed out as UTF-8 with the parameters of each request given with the request.
//
//   host::Localization localization(LM_MODULE, "/usr/share/app/loc");
//   host::ScopeTexts texts = localization.Texts("download", "ru");
//   std::string status = texts.Get("status", {{"count", 3}, {"folders", 2}});
//
// Failures come as exceptions (LocalizationError) or, from the overloads that take a Failure,
// as values: the module's result code, its text, and the lines the module traced for that very
// request (the parse report of a broken file, "Key 'x' not found"), so that a host can tell
// one from the other and show why.
//
// Threads: a Localization and the ScopeTexts it hands out may be used from any number of
// threads at once, each request with its own parameters. Objects keep the module loaded for
// as long as any of them lives, whatever the order they are destroyed in.

#include "localization_manager/ILocalizer.h"
#include "localization_manager/host/InterfacePtr.h"
#include "localization_manager/host/TextKey.h"
#include "localization_manager/host/Tracer.h"
#include "ulo/IIO.h"
#include "ulo/String.h"

#include <cstdint>
#include <initializer_list>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace localization_manager::host {

// One parameter of one request: its name as the texts write it, without "$", and its value.
// Integers are written in decimal digits, as plural forms choose by them.
class Parameter {
  public:
    template <
        class Integer,
        std::enable_if_t<std::is_integral_v<Integer> && !std::is_same_v<Integer, bool>, int> = 0>
    Parameter(std::string_view name, Integer value) : Parameter(name, std::to_string(value)) {}
    Parameter(std::string_view name, std::string_view value);
    Parameter(std::string_view name, const char* value)
        : Parameter(name, std::string_view(value != nullptr ? value : "")) {}
    Parameter(std::string_view name, const std::string& value)
        : Parameter(name, std::string_view(value)) {}

    const std::u16string& Name() const noexcept { return name_; }
    const std::u16string& Value() const noexcept { return value_; }

  private:
    std::u16string name_;
    std::u16string value_;
};

// Why a request failed. Empty (false) when it did not.
struct Failure {
    std::int32_t code = 0;  // the module's result code, or one of the host library's
    // "0x8000004B (Unspecified error): text 'status' of scope 'download' in 'ru'", or what
    // failed before the module was asked.
    std::string message;
    // What the module traced while serving the request, one line each.
    std::vector<std::string> trace;

    explicit operator bool() const noexcept { return code != 0; }
    // The message and, on the following lines, the trace.
    std::string Describe() const;
};

class LocalizationError : public std::runtime_error {
  public:
    explicit LocalizationError(Failure failure);
    const Failure& failure() const noexcept { return failure_; }

  private:
    Failure failure_;
};

class Localization;

// The texts and binary resources of one scope in one culture. Cheap to copy; every copy serves
// the same localizer.
class ScopeTexts {
  public:
    // The text of `key` in UTF-8, with `parameters` answering its "$name" parameters. A
    // parameter the text asks for and the request does not give fails the request (the
    // failure names it). The first form throws LocalizationError; the second returns an empty
    // string and fills `failure`.
    std::string Get(std::string_view key, std::initializer_list<Parameter> parameters = {}) const;
    std::string Get(std::string_view key, std::initializer_list<Parameter> parameters,
                    Failure& failure) const;
    std::string Get(std::string_view key, const std::vector<Parameter>& parameters) const;
    std::string Get(std::string_view key, const std::vector<Parameter>& parameters,
                    Failure& failure) const;

    // The text of a key constant that "locmgr keys" wrote: a request that does not give every
    // parameter the key's texts ask for in any culture fails before the module is asked
    // (0x80000046, "Invalid argument"), whichever culture this is.
    std::string Get(const TextKey& key, std::initializer_list<Parameter> parameters = {}) const;
    std::string Get(const TextKey& key, std::initializer_list<Parameter> parameters,
                    Failure& failure) const;

    // The same in the framework's UTF-16 string, as the module gives it (no conversion).
    ulo::string16_t GetUtf16(std::string_view key,
                             std::initializer_list<Parameter> parameters = {}) const;
    ulo::string16_t GetUtf16(std::string_view key, const std::vector<Parameter>& parameters,
                             Failure& failure) const;

    // The bytes of binary resource `key` ("icon.svg"); likewise with exceptions or a Failure.
    std::string ReadResource(std::string_view key) const;
    std::string ReadResource(std::string_view key, Failure& failure) const;
    // A read-only stream over it, for large resources.
    InterfacePtr<ulo::IIO> OpenResource(std::string_view key, Failure& failure) const;

    // The module's localizer, for what this class does not offer.
    const InterfacePtr<ILocalizer>& Localizer() const noexcept { return localizer_; }

  private:
    friend class Localization;
    struct Session;
    ScopeTexts(std::shared_ptr<const Session> session, InterfacePtr<ILocalizer> localizer,
               std::string description, Failure failure);

    // `typed` is the key's constant, or null.
    ulo::string16_t Fetch(std::string_view key, const TextKey* typed, const Parameter* parameters,
                          std::size_t count, Failure& failure) const;

    // Declared first, destroyed last: the module stays loaded while the localizer lives.
    std::shared_ptr<const Session> session_;
    InterfacePtr<ILocalizer> localizer_;
    std::string description_;  // "scope 'download' in 'ru'"
    Failure failure_;          // why there is no localizer
};

class Localization {
  public:
    struct Options {
        // An alternative directory searched before the root, or empty.
        std::string alternative;
        // Where the module's lines go that belong to no request of this class (a component
        // used directly, through Localizer()), and those of requests that succeeded anyway.
        // Empty: standard error.
        Tracer::Sink sink;
    };

    // Loads the module at `modulePath` (LocalizationManager_MODULE of the installed package)
    // and opens the tree at `root`. Throws LocalizationError, or fills `failure` and leaves
    // the object without a tree (every Texts call then fails with that failure).
    Localization(const std::string& modulePath, const std::string& root,
                 const Options& options = {});
    Localization(const std::string& modulePath, const std::string& root, const Options& options,
                 Failure& failure);

    // The texts of `scope` in `culture` (a culture name: "ru", "en-US", "sr-Latn", "anz").
    // Throws LocalizationError, or fills `failure` and returns texts whose every request
    // fails with it.
    ScopeTexts Texts(std::string_view scope, std::string_view culture) const;
    ScopeTexts Texts(std::string_view scope, std::string_view culture, Failure& failure) const;

  private:
    std::shared_ptr<const ScopeTexts::Session> session_;
};

}  // namespace localization_manager::host
