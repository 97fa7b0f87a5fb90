#include "CommandSupport.h"

#include "Baseline.h"
#include "CheckSettings.h"
#include "CultureFolder.h"
#include "MergeRecord.h"
#include "StringLocalizing/Model/CultureNames.h"
#include "TreeScan.h"
#include "UsageError.h"
#include "ulo/ResultCode.h"

#include <iostream>

namespace locmgr {

bool ConvertCultureOrReport(ModuleSession& session, const std::string& name,
                            localization_manager::Culture& culture) {
    const std::int32_t code = session.ConvertCulture(name, culture);
    if (ulo::Succeeded(code)) {
        return true;
    }
    // Said in our own words even when the converter traced: a user needs the name first.
    session.TakeLines();
    std::cerr << "locmgr: unknown culture name '" << name
              << "'; try a name such as ru, en-US, sr-Latn or anz\n";
    return false;
}

std::string FormatOption(const Options& options, const std::vector<std::string>& formats) {
    const std::string format = options.Value(kFormatOption.name);
    std::string known;
    for (const std::string& candidate : formats) {
        if (candidate == format) {
            return format;
        }
        known += (known.empty() ? "" : ", ") + candidate;
    }
    throw UsageError("unknown --format '" + format + "'; use one of " + known);
}

std::string ReferenceOption(const Options& options, std::vector<std::string>& extraCultures) {
    const std::string reference = options.Value(kReferenceOption.name);
    if (reference == analysis::kNeutralFolder) {
        return reference;
    }
    localization_manager::Culture culture;
    if (ulo::Failed(
            LocalizationManager::StringLocalizing::Model::ConvertCultureName(reference, culture))) {
        throw UsageError("unknown culture name '" + reference + "' for --reference");
    }
    extraCultures.push_back(reference);
    return analysis::CultureName(culture);
}

bool OpenTreeOrReport(ModuleSession& session, const Options& options) {
    const std::string root = options.Value(kRootOption.name);
    const std::int32_t code = session.OpenTree(root, options.Value(kAltOption.name));
    if (ulo::Succeeded(code)) {
        return true;
    }
    session.ReportFailure("cannot use the localization tree at '" + root + "'", code);
    return false;
}

int RunOnTree(const std::string& command, const std::function<void()>& analysis) {
    const auto fail = [&command](const std::exception& error) {
        std::cerr << "locmgr " << command << ": " << error.what() << "\n";
        return kExitUsage;
    };
    try {
        analysis();
    } catch (const analysis::TreeError& error) {
        return fail(error);
    } catch (const analysis::SettingsError& error) {
        return fail(error);
    } catch (const analysis::BaselineError& error) {
        return fail(error);
    } catch (const analysis::MergeRecordError& error) {
        return fail(error);
    } catch (const std::invalid_argument& error) {
        throw UsageError(error.what());
    }
    return kExitOk;
}

}  // namespace locmgr
