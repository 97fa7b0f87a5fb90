// Prints the German title of the download dialog of the tree given as the only argument:
// the whole way of a host, from loading the module to unloading it.

#include "localization_manager/ClassIds.h"
#include "localization_manager/ICultureConverter.h"
#include "localization_manager/ILocalizationManager.h"
#include "localization_manager/host/Host.h"

#include <iostream>

namespace host = localization_manager::host;

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: consumer ROOT\n";
        return 2;
    }
    host::ModuleLoader module;
    if (!module.Load(LM_MODULE)) {
        std::cerr << module.Error() << "\n";
        return 2;
    }
    int status = 1;
    {
        auto services = host::ServiceLocator::Create(host::Tracer::Create());
        host::InterfacePtr<localization_manager::ICultureConverter> converter;
        host::InterfacePtr<localization_manager::ILocalizationManager> manager;
        host::InterfacePtr<localization_manager::ILocalizer> localizer;
        localization_manager::Culture culture;
        ulo::string16_t text;
        if (ulo::Succeeded(module.CreateInstance(localization_manager::kCultureConverterClassId,
                                                 services.Get(), converter)) &&
            ulo::Succeeded(converter->ConvertCultureName("de", &culture)) &&
            ulo::Succeeded(module.CreateInstance(localization_manager::kLocalizationManagerClassId,
                                                 services.Get(), manager)) &&
            ulo::Succeeded(manager->Construct(host::ToFrameworkString(argv[1]), {})) &&
            ulo::Succeeded(manager->GetLocalizer(u"download", culture, nullptr, localizer.Put())) &&
            ulo::Succeeded(localizer->GetString(u"windowTitle", text))) {
            std::cout << host::ToUtf8(text) << "\n";
            status = 0;
        }
    }
    // Every object is released, so the module must agree to go.
    if (!module.Unload()) {
        std::cerr << module.Error() << "\n";
        return 1;
    }
    return status;
}
