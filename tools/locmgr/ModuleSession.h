#pragma once

#include "localization_manager/Culture.h"
#include "localization_manager/ICultureConverter.h"
#include "localization_manager/ILocalizationManager.h"
#include "localization_manager/ILocalizer.h"
#include "localization_manager/IParamResolver.h"
#include "localization_manager/host/InterfacePtr.h"
#include "localization_manager/host/ModuleLoader.h"
#include "localization_manager/host/ServiceLocator.h"

#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace locmgr {

using localization_manager::host::InterfacePtr;

// The module cannot be loaded or does not give the components locmgr needs (exit status 2).
class ModuleUnavailable : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

struct TraceLine {
    std::int32_t level;
    std::string text;
};

// locmgr as a host: the loaded module, the services it gets and the components made from it.
// Every tracer line goes to standard error as it is committed and is also kept until
// TakeLines, so that a command can tell a failure the module has explained from one it has
// not, and batch can answer with the line itself.
class ModuleSession {
  public:
    // Loads `modulePath`, or with an empty path the module beside this executable. Throws
    // ModuleUnavailable.
    explicit ModuleSession(const std::string& modulePath);
    // Releases every component, then unloads the module.
    ~ModuleSession();

    ModuleSession(const ModuleSession&) = delete;
    ModuleSession& operator=(const ModuleSession&) = delete;

    // Through the module's culture converter (created on first use; ModuleUnavailable if it
    // cannot be).
    std::int32_t ConvertCulture(const std::string& name, localization_manager::Culture& culture);

    // Creates the manager (ModuleUnavailable if it cannot) and constructs it over the tree.
    std::int32_t OpenTree(const std::string& root, const std::string& alternative);

    // After OpenTree.
    std::int32_t GetLocalizer(const std::string& scope,
                              const localization_manager::Culture& culture,
                              localization_manager::IParamResolver* paramResolver,
                              InterfacePtr<localization_manager::ILocalizer>& localizer);

    // The lines committed since the last call.
    std::vector<TraceLine> TakeLines();

    // After a failing call: tells on standard error what failed, unless the module has already
    // explained it in a tracer line. Takes the lines either way.
    void ReportFailure(const std::string& what, std::int32_t code);

  private:
    struct LineLog;

    localization_manager::host::ModuleLoader loader_;
    std::shared_ptr<LineLog> lineLog_;
    InterfacePtr<localization_manager::host::ServiceLocator> services_;
    InterfacePtr<localization_manager::ICultureConverter> converter_;
    InterfacePtr<localization_manager::ILocalizationManager> manager_;
};

// "0x8000004B (Unspecified error)".
std::string DescribeResultCode(std::int32_t code);

// The module of a build tree (beside locmgr) or of an installation (in the library folder).
// Throws ModuleUnavailable when neither exists.
std::string DefaultModulePath();

}  // namespace locmgr
