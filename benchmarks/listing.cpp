// Lists one archive through its driver and reads all ten fields of every member: bench_listing [--halves] ARCHIVE
//
// ./bench compares its whole-process time and memory with those of other programs. --halves prints what listing and
// reading took, each alone.

#include <chrono>
#include <cstdio>
#include <cstring>
#include <filesystem>

#include "host/console/system_services.h"

namespace {

class SilentMessages final : public tovar::MessageBoxes {
public:
    void show(tovar::WindowHandle, std::wstring_view, std::wstring_view, tovar::MessageIcon) override {}
};

double millisecondsSince(std::chrono::steady_clock::time_point begin) {
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin).count();
}

}  // namespace

int main(int count, char** arguments) {
    const bool halves = count == 3 && std::strcmp(arguments[1], "--halves") == 0;
    if (count != 2 && !halves) {
        std::fprintf(stderr, "bench_listing [--halves] ARCHIVE\n");
        return 2;
    }
    SilentMessages messages;
    tovar::host::SystemServices system(messages);
    const std::wstring file = std::filesystem::absolute(arguments[count - 1]).wstring();
    const tovar::KindRow* row = tovar::kindByName(file);
    if (row == nullptr || row->makeDriver == nullptr) return 1;
    const auto driver = row->makeDriver(system.drivers());

    const auto begin = std::chrono::steady_clock::now();
    const std::uint32_t members = driver->SetArcFile(file);
    const double listing = millisecondsSince(begin);
    const auto middle = std::chrono::steady_clock::now();
    std::size_t characters = 0;
    for (std::uint32_t i = 0; i < members; ++i) {
        characters += driver->FileName(i).size() + driver->FilePath(i).size() + driver->FileOriginal(i).size() +
                      driver->FilePacked(i).size() + driver->FileRatio(i).size() + driver->FileDate(i).size() +
                      driver->FILETIME(i).size() + driver->FileAttr(i).size() + driver->FileType(i).size() +
                      driver->FileCRC(i).size();
    }
    std::printf("%u members, %zu characters", static_cast<unsigned>(members), characters);
    if (halves) std::printf(", listed in %.1f ms, read in %.1f ms", listing, millisecondsSince(middle));
    std::printf("\n");
    return members == 0 ? 1 : 0;
}
