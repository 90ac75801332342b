#include "unpacking/support/real_scene.h"

#include <algorithm>
#include <fstream>
#include <iterator>

#include "archivers/formats/tar/tar_format.h"
#include "archivers/formats/zip/zip_reader.h"
#include "archivers/unpacking/utf8_path.h"

namespace archiver::test {
namespace {

std::string bytesOf(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    if (!stream) return "(none)";
    return {std::istreambuf_iterator<char>(stream), {}};
}

Lines below(const std::filesystem::path& folder) {
    Lines names;
    std::error_code error;
    for (auto entry = std::filesystem::recursive_directory_iterator(folder, error);
         entry != std::filesystem::recursive_directory_iterator(); entry.increment(error)) {
        const std::u8string name = entry->path().lexically_relative(folder).generic_u8string();
        names.emplace_back(name.begin(), name.end());
        if (entry->is_directory() && !entry->is_symlink()) names.back() += '/';
    }
    std::ranges::sort(names);
    return names;
}

}  // namespace

std::string zipOf(const std::vector<BuiltMember>& members) {
    ZipBuilder builder;
    for (const BuiltMember& member : members) builder.add(member);
    return builder.build();
}

RealScene::RealScene(const std::string& archive) : events(folder_.path() / "target") {
    archive_ = folder_.write("archive", archive);
    folder_.write("secret", "secret");
    std::filesystem::create_directory(folder_.path() / "outside");
    std::filesystem::create_directory(folder_.path() / "target");
    options.target = folder_.path() / "target";
    options.existing = ExistingFiles::kReplace;
}

ReturnCode RealScene::unpack() {
    OpenResult opened = openZip(archive_);
    if (!opened.reader) opened = openTar(archive_);
    if (!opened.reader) return opened.code;
    return unpackMembers(*opened.reader, {}, options, {}, systemTarget(), events).code;
}

std::string RealScene::read(const std::string& name) const { return bytesOf(target() / pathOfUtf8(name)); }

Lines RealScene::names() const { return below(target()); }

void RealScene::write(const std::string& name, std::string_view bytes) const {
    std::ofstream(target() / pathOfUtf8(name), std::ios::binary) << bytes;
}

bool RealScene::linkTo(const std::string& name, const std::string& to) const {
    std::error_code error;
    std::filesystem::create_directory_symlink(folder_.path() / pathOfUtf8(to), target() / pathOfUtf8(name), error);
    return !error;
}

bool RealScene::isOutsideUntouched() const {
    Lines names;
    for (const auto& entry : std::filesystem::directory_iterator(folder_.path())) {
        names.push_back(entry.path().filename().string());
    }
    std::ranges::sort(names);
    return names == Lines{"archive", "outside", "secret", "target"} && bytesOf(folder_.path() / "secret") == "secret" &&
           std::filesystem::is_empty(folder_.path() / "outside");
}

}  // namespace archiver::test
