#pragma once

#include "localization_manager/Culture.h"
#include "localization_manager/ILocalizer.h"
#include "localization_manager/IParamResolver.h"
#include "ulo/IObject.h"
#include "ulo/String.h"

#include <cstdint>

namespace localization_manager {

// Hands out localizers over one localization tree. Create it through the factory of class
// kLocalizationManagerClassId, then call Construct once before asking for localizers.
//
// Threads: any thread may call any method, several at once; the manager serialises them
// inside. A localizer keeps the tree it was made with when Construct replaces it. Ownership:
// the caller owns the reference GetLocalizer hands out; a localizer keeps what it needs of the
// manager, and may outlive it.
class ILocalizationManager : public ulo::IObject {
  public:
    static constexpr ulo::InterfaceId kInterfaceId = 0x9E168F3Fu;

    // Slot 3: uses the tree at `root` (a directory), overridden by `alternative` (a directory,
    // or empty for none). Returns 0; 0x8000006A ("Invalid state") for an empty root;
    // 0x8000004B after writing the reason to the tracer. A second call replaces the tree for
    // localizers made afterwards.
    virtual std::int32_t Construct(const ulo::string16_t& root,
                                   const ulo::string16_t& alternative) = 0;

    // Slot 4: a localizer for `scope` and `culture`, with one reference for the caller, in
    // `*localizer`. `paramResolver` may be null when no text needs a parameter. Returns 0;
    // 0x80000046 for a null `localizer`; 0x8000006A before a successful Construct; 0x8000004B
    // after writing the reason to the tracer.
    virtual std::int32_t GetLocalizer(const ulo::string16_t& scope, const Culture& culture,
                                      IParamResolver* paramResolver, ILocalizer** localizer) = 0;

  protected:
    ~ILocalizationManager() = default;
};

// The two directories of a localization tree, as IConstruct takes them.
struct ConstructParams {
    ulo::string16_t root;
    ulo::string16_t alternative;
};

// The manager's second interface: construction from one record.
class IConstruct : public ulo::IObject {
  public:
    static constexpr ulo::InterfaceId kInterfaceId = 0xA2C68B41u;

    // Slot 3: ILocalizationManager::Construct(params->root, params->alternative); 0x80000046
    // ("Invalid argument") for a null `params`.
    virtual std::int32_t Construct(const ConstructParams* params) = 0;

  protected:
    ~IConstruct() = default;
};

}  // namespace localization_manager
