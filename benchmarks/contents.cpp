// Measures what the browser does with a large listing, without a window and without an archive: bench_contents
//
// A listing of a million members with names of 40 characters is made up, in 100,000 folders and in one; the folder
// model is built, and 100,000 and 1,000,000 rows are put in order by each column, in both views. Per step the time,
// that of the processor, the longest time without a breath (in which messages run), and in the end the process's peak
// memory.

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <iterator>
#include <string>
#include <utility>

#include "benchmarks/process_usage.h"
#include "browser/contents_list.h"
#include "browser/folder_model.h"
#include "drivers/listed_driver.h"

namespace {

using Clock = std::chrono::steady_clock;

double millisecondsSince(Clock::time_point begin) {
    return std::chrono::duration<double, std::milli>(Clock::now() - begin).count();
}

/// As the real one, but for the messages.
class TimingBreather final : public tovar::Breather {
public:
    void begin() override { last_ = Clock::now(); }
    [[nodiscard]] bool breathe() override {
        longest_ = std::max(longest_, millisecondsSince(last_));
        last_ = Clock::now();
        return true;
    }
    double takeLongest() { return std::exchange(longest_, 0); }

private:
    Clock::time_point last_{};
    double longest_ = 0;
};

class SilentMessages final : public tovar::MessageBoxes {
public:
    void show(tovar::WindowHandle, std::wstring_view, std::wstring_view, tovar::MessageIcon) override {}
};

class PlainTypes final : public tovar::FileTypes {
public:
    [[nodiscard]] tovar::FileType ofFile(std::wstring_view name) override {
        return {0, std::wstring(name.substr(name.rfind(L'.') + 1)) + L" file"};
    }
    [[nodiscard]] tovar::FileType ofFolder() override { return {0, L"Folder"}; }
    [[nodiscard]] int openFolderIcon() override { return 0; }
};

const tovar::DriverDescription kDescription{.library = L"none", .prefix = "None", .messageTitle = L"None"};

/// A driver whose listing is made up.
class MadeUpDriver final : public tovar::ListedDriver {
public:
    MadeUpDriver() : ListedDriver(kDescription, messages_, regional_) {}

    std::uint32_t list(std::uint32_t members, std::uint32_t folders) {
        static constexpr const wchar_t* kExtensions[] = {L".txt", L".cpp", L".h", L".png", L".dat", L".html"};
        static constexpr const wchar_t* kMethods[] = {L"Deflate", L"Store", L"LZMA"};
        tovar::EntryTable& table = beginListing();
        std::uint64_t random = 88172645463325252U;
        std::wstring name;
        for (std::uint32_t member = 0; member < members; ++member) {
            random ^= random << 13;
            random ^= random >> 7;
            random ^= random << 17;
            const auto low = static_cast<std::uint32_t>(random), high = static_cast<std::uint32_t>(random >> 32);
            const std::uint32_t folder = folders == 1 ? 0 : member % folders;
            name = L"top" + std::to_wstring(folder / 1000) + L"/folder" + std::to_wstring(folder) + L'/';
            const std::size_t start = name.size();
            const std::wstring extension = kExtensions[low % std::size(kExtensions)];
            name += L"Member " + std::to_wstring(high) + L' ' + std::to_wstring(member);
            name.resize(start + 40 - extension.size(), L'x');
            name += extension;
            const std::uint64_t size = (random >> 20) >> (low % 44);
            table.add({.original = size,
                       .packed = size / 3,
                       .crc = low,
                       .ratio = static_cast<std::int16_t>(high % 1001),
                       .date = static_cast<std::uint16_t>((25 + high % 20) << 9 | (1 + low % 12) << 5 | (1 + low % 28)),
                       .time = static_cast<std::uint16_t>(low % 24 << 11 | high % 60 << 5 | low % 30)},
                      name, low % 10 == 0 ? L"a-r-" : L"a--w", kMethods[high % std::size(kMethods)]);
        }
        setListingComplete(true);
        return table.size();
    }

    [[nodiscard]] bool CheckArchive(std::wstring_view) override { return false; }
    [[nodiscard]] bool TestArchive(std::wstring_view) override { return false; }
    std::uint32_t SetArcFile(std::wstring_view) override { return entries().size(); }
    tovar::ExtractResult extract(const tovar::ExtractRequest&) override { return {}; }
    void setProgress(tovar::ExtractProgressSink) override {}
    [[nodiscard]] const tovar::TextCodec& listCodec() override { return codec_; }

private:
    SilentMessages messages_;
    tovar::RegionalSettings regional_;
    tovar::Utf8Codec codec_;
};

class Bench {
public:
    void run(std::uint32_t members, std::uint32_t folders) {
        const auto begin = Clock::now();
        driver_.list(members, folders);
        std::printf("%u members in %u folders\n", static_cast<unsigned>(members), static_cast<unsigned>(folders));
        std::printf("   %-34s %9.1f ms\n", "made up", millisecondsSince(begin));
        timed("folder model", [&] { folders_.build(L"bench", driver_.entries(), &breather_); });
        tovar::ContentsList list(driver_, folders_, types_, {});
        list.setBreather(&breather_);
        tovar::Folder largest = 0;
        for (tovar::Folder folder = 0; folder < folders_.size(); ++folder) {
            if (folders_.files(folder).size() > folders_.files(largest).size()) largest = folder;
        }
        list.show(largest);
        if (folders == 1) sortAll(list);
        std::printf("   %-34s %9.1f MiB\n", "peak memory of the process", bench::peakMemoryMib());
    }

private:
    template <class Step>
    void timed(const std::string& name, const Step& step) {
        breather_.takeLongest();
        const auto begin = Clock::now();
        const double processor = bench::processorTimeMs();
        step();
        const double whole = millisecondsSince(begin);
        std::printf("   %-34s %9.1f ms, processor %8.1f ms, longest without a breath %6.1f ms\n", name.c_str(), whole,
                    bench::processorTimeMs() - processor, breather_.takeLongest());
    }

    void sortAll(tovar::ContentsList& list) {
        for (const bool exact : {false, true}) {
            list.setExact(exact);
            for (std::size_t column = 0; column < list.columns().size(); ++column) {
                const std::wstring_view header = list.columns()[column].header;
                timed((exact ? "exact: " : "sort: ") + std::string(header.begin(), header.end()),
                      [&] { list.sortBy(column); });
            }
        }
        timed("find a name that is not there", [&] { (void)list.findName(L"Member 1 x", 0); });
    }

    MadeUpDriver driver_;
    PlainTypes types_;
    tovar::FolderModel folders_;
    TimingBreather breather_;
};

}  // namespace

int main() {
    Bench().run(100'000, 1);
    Bench().run(1'000'000, 100'000);
    Bench().run(1'000'000, 1);
    return 0;
}
