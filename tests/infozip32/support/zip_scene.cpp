#include "infozip32/support/zip_scene.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <fstream>
#include <utility>

#include "archivers/formats/zip/zip_reader.h"
#include "archivers/packing/source_item.h"
#include "archivers/unpacking/utf8_path.h"

namespace archiver::test {
namespace {

ZipScene* scene = nullptr;  // callbacks get no word of ours with them

std::uint32_t ARCHIVER_CALL onMessage(const char* text, std::uint32_t length) {
    EXPECT_EQ(std::strlen(text), length) << "a NUL behind the text";
    scene->messages.emplace_back(text, length);
    return length;
}

std::int32_t ARCHIVER_CALL onComment(char* buffer) {
    scene->oldComment = buffer;
    std::strcpy(buffer, scene->newComment.c_str());
    return scene->commentAnswer;
}

std::int32_t ARCHIVER_CALL onPassword(char* buffer, std::int32_t size, const char* prompt, const char* name) {
    const std::size_t turn = scene->prompts.size();
    scene->prompts.emplace_back(prompt);
    scene->promptedNames.emplace_back(name);
    const std::string answer = turn < scene->passwords.size() ? scene->passwords[turn] : std::string();
    EXPECT_GT(size, static_cast<std::int32_t>(answer.size()));
    std::strcpy(buffer, answer.c_str());
    return scene->passwordAnswer;
}

std::int32_t ARCHIVER_CALL onService(const char* name, std::uint32_t size) {
    const bool stop = static_cast<long>(scene->serviced.size()) == scene->stopAt;
    scene->serviced.emplace_back(name, size);
    return stop ? 1 : 0;
}

}  // namespace

ZipScene::ZipScene() : archive(folder_.path() / "made.zip") {
    options.level = '6';
    core_.setUnicodeMode(1);
}

ZipScene::~ZipScene() = default;

zip_abi::Callbacks ZipScene::callbacks() { return {&onMessage, &onComment, &onPassword, &onService}; }

std::filesystem::path ZipScene::path(const std::string& name) const { return folder_.path() / pathOfUtf8(name); }

void ZipScene::write(const std::string& name, const std::string& bytes, long age) {
    const std::filesystem::path file = path(name);
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << bytes;
    std::filesystem::last_write_time(file, std::filesystem::file_time_type::clock::now() - std::chrono::seconds(age));
}

void ZipScene::makeFolder(const std::string& name) { std::filesystem::create_directories(path(name)); }

bool ZipScene::exists(const std::string& name) const { return std::filesystem::exists(path(name)); }

std::vector<std::string> ZipScene::strays() const {
    std::vector<std::string> found;
    for (const auto& each : std::filesystem::directory_iterator(folder_.path())) {
        const std::string name = each.path().filename().string();
        if (name.starts_with("~")) found.push_back(name);
    }
    return found;
}

std::int32_t ZipScene::run(const std::vector<std::string>& names) {
    scene = this;
    messages.clear();
    prompts.clear();
    promptedNames.clear();
    serviced.clear();
    const zip_abi::Callbacks calls = callbacks();
    EXPECT_EQ(core_.init(&calls), 1);
    const std::string root = utf8OfPath(folder_.path()) + "/";
    options.rootFolder = root.c_str();
    EXPECT_EQ(core_.setOptions(&options), 1);
    const std::string archiveName = utf8OfPath(archive);
    std::vector<const char*> slots;
    if (!names.empty()) slots.push_back(names.front().c_str());
    for (const std::string& each : names) slots.push_back(each.c_str());
    const std::filesystem::path before = std::filesystem::current_path();
    const std::int32_t code =
        core_.archive({static_cast<std::int32_t>(slots.size()), archiveName.c_str(), slots.data()});
    EXPECT_EQ(std::filesystem::current_path(), before) << "the current folder is restored";
    options.rootFolder = nullptr;
    scene = nullptr;
    return code;
}

std::string ZipScene::text() const {
    std::string all;
    for (const std::string& each : messages) all += each;
    return all;
}

std::map<std::string, std::string> ZipScene::members(const std::string& password) const {
    std::map<std::string, std::string> found;
    const OpenResult opened = openZip(archive);
    EXPECT_NE(opened.reader, nullptr) << opened.code;
    if (!opened.reader) return found;
    opened.reader->setPassword(password);
    Member member;
    while (opened.reader->next(member) == kOk) {
        std::string content;
        EXPECT_FALSE(found.contains(member.name)) << member.name;
        if (member.kind != MemberKind::kFolder) {
            EXPECT_EQ(opened.reader->read([&](const char* bytes, std::size_t size) {
                content.append(bytes, size);
                return true;
            }),
                      kOk)
                << member.name;
        }
        found.emplace(member.name, std::move(content));
    }
    return found;
}

std::vector<std::string> ZipScene::memberNames() const {
    std::vector<std::string> names;
    const OpenResult opened = openZip(archive);
    EXPECT_NE(opened.reader, nullptr) << opened.code;
    Member member;
    while (opened.reader && opened.reader->next(member) == kOk) names.push_back(member.name);
    return names;
}

std::string numbered(const char* text, std::size_t number) {
    std::string result = text;
    return result.append(std::to_string(number));
}

std::string textOfSize(std::size_t size) {
    std::string text;
    for (std::size_t line = 0; text.size() < size; ++line) {
        text += "line " + std::to_string(line * 7919 % 100'003) + " of a text\n";
    }
    text.resize(size);
    return text;
}

std::string noiseOfSize(std::size_t size) {
    std::string noise(size, '\0');
    std::uint64_t state = 88172645463325252ULL;
    for (char& each : noise) {
        state ^= state << 13;
        state ^= state >> 7;
        state ^= state << 17;
        each = static_cast<char>(state >> 32 & 0xFF);
    }
    return noise;
}

}  // namespace archiver::test
