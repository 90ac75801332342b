#pragma once
#include <filesystem>
#include <string>
#include <vector>

#include "archivers/convention/abi.h"
#include "archivers/module.h"

namespace archiver::testing {

/// A bundled library as a caller binds it: by the names that it exports.
class LoadedLibrary {
public:
    LoadedLibrary(const char* module, std::string prefix) : module_(module), prefix_(std::move(prefix)) {}

    [[nodiscard]] bool loaded() const { return module_.loaded(); }

    /// The function of a type of archiver::fn whose name is the prefix and `name`; null when it is not exported.
    template <class Function>
    [[nodiscard]] Function* find(const char* name) const {
        return reinterpret_cast<Function*>(module_.find((prefix_ + name).c_str()));
    }
    /// Calls it; it must be there.
    template <class Function, class... Arguments>
    auto call(const char* name, Arguments... arguments) const {
        return find<Function>(name)(arguments...);
    }

private:
    Module module_;
    std::string prefix_;
};

/// One member as the exported functions tell it.
struct ListedMember {
    IndividualInfo info;
    std::uint32_t writeTime;
    std::int32_t attribute;
};

/// Lists a whole archive.
/// @param ended  what FindFirst or FindNext answered behind the last member; 0 when the archive was not opened
std::vector<ListedMember> list(const LoadedLibrary& library, const std::string& file, std::int32_t& ended);

/// The path of an archive that was made by another program, as a text for an exported function.
std::string sample(const char* name);

}  // namespace archiver::testing
