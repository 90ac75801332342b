#pragma once
#include <windows.h>

#include <oleauto.h>

#include <memory>

#include "front/automation/automation.h"
#include "front/win32/com_support.h"
#include "front/win32/component.h"
#include "tovar_idl.h"

namespace tovar {

/// What objects of a listing share; it stays as it is, whatever becomes of the archive.
struct SharedListing {
    std::shared_ptr<Component> component;  ///< what the driver stands on
    ListedArchive archive;
};

/// Makes the collection of a listing's entries.
/// @throws std::bad_alloc
[[nodiscard]] ComOwner<ITovarEntries> makeEntries(std::shared_ptr<const SharedListing> listing);

}  // namespace tovar
