#include "front/win32/component.h"

#include <map>
#include <mutex>

#include "front/win32/type_library.h"
#include "shell/paths.h"
#include "shell/win32/regional_settings.h"

namespace tovar {

std::shared_ptr<Component> Component::ofThisThread() {
    static std::mutex mutex;
    static std::map<DWORD, std::weak_ptr<Component>> components;
    const std::lock_guard guard(mutex);
    std::erase_if(components, [](const auto& each) { return each.second.expired(); });
    std::weak_ptr<Component>& known = components[::GetCurrentThreadId()];
    std::shared_ptr<Component> component = known.lock();
    if (!component) known = component = std::make_shared<Component>();
    return component;
}

Component::Component()
    : regional_(loadRegionalSettings()),
      loader_(systemModuleLoader()),
      folders_(systemLibraryFolders()),
      finder_(systemPaths_, files_, *folders_, ParentPath(modulePath())) {}

TovarPorts Component::ports() {
    return {.surroundings = shared_from_this(),
            .state = state_,
            .settings = settings_,
            .workFolder = workFolder_,
            .paths = paths_,
            .drivers = {libraries_, messages_, regional_, files_, passwords_},
            .pointer = pointer_,
            .pump = pump_,
            .windows = windows_,
            .browsers = browsers_,
            .creation = creation_,
            .configuration = configuration_};
}

AutomationPorts Component::automation() {
    return {.libraries = libraries_,
            .regional = regional_,
            .files = files_,
            .paths = systemPaths_,
            .zipLibraries = zipLibraries_,
            .workFolder = workFolder_,
            .use =
                [this](ArchiveKind bit) {
                    if ((state_.availability & bit) == 0) return KindUse::Missing;
                    return (state_.effective & bit) == 0 ? KindUse::SwitchedOff : KindUse::Ready;
                },
            .working = state_.working};
}

}  // namespace tovar
