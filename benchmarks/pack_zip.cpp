// Packs the current folder into a ZIP archive by the bundled library, as a caller does: pack_zip LIBRARY LEVEL ARCHIVE
// [NAME]
#include <dlfcn.h>

#include <cstdio>
#include <filesystem>
#include <string>

#include "archivers/convention/zip_abi.h"

namespace abi = archiver::zip_abi;

namespace {

std::uint32_t onMessage(const char*, std::uint32_t length) { return length; }
std::int32_t onComment(char*) { return 0; }
std::int32_t onService(const char*, std::uint32_t) { return 0; }

}  // namespace

int main(int count, char** words) {
    if (count < 4) return 2;
    void* const library = ::dlopen(words[1], RTLD_NOW);
    if (library == nullptr) {
        std::fprintf(stderr, "%s\n", ::dlerror());
        return 2;
    }
    const auto init = reinterpret_cast<abi::fn::Init*>(::dlsym(library, "ZpInit"));
    const auto setOptions = reinterpret_cast<abi::fn::SetOptions*>(::dlsym(library, "ZpSetOptions"));
    const auto archive = reinterpret_cast<abi::fn::Archive*>(::dlsym(library, "ZpArchive"));
    if (init == nullptr || setOptions == nullptr || archive == nullptr) return 2;

    const abi::Callbacks callbacks{&onMessage, &onComment, nullptr, &onService};
    const std::string root = std::filesystem::current_path().string();
    abi::Options options{};
    options.rootFolder = root.c_str();
    options.recurse = 1;
    options.level = *words[2];
    const char* const names[] = {count > 4 ? words[4] : "*.*"};
    init(&callbacks);
    setOptions(&options);
    const std::int32_t result = archive({1, words[3], names});
    if (result != 0) std::fprintf(stderr, "result %d\n", static_cast<int>(result));
    return result;
}
