#include "unpacking/fakes/recording_events.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>

namespace archiver::test {
namespace {

constexpr std::array kWords = {"unpacked", "folder", "link", "tested", "skipped", "refused", "failed"};

std::string hex(ReturnCode code) {
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "%04X", static_cast<unsigned>(code));
    return text.data();
}

}  // namespace

void RecordingEvents::expectOwnThread() const { EXPECT_EQ(std::this_thread::get_id(), thread_); }

std::string RecordingEvents::below(const std::filesystem::path& file) const {
    const std::u8string text = file.lexically_relative(target_).generic_u8string();
    return {text.begin(), text.end()};
}

bool RecordingEvents::begins(const Member& member, const std::filesystem::path&) {
    expectOwnThread();
    begun.push_back(member.name);
    return !onBegin || onBegin(member);
}

bool RecordingEvents::progress(const UnpackProgress& progress) {
    expectOwnThread();
    ++progresses;
    if (totals.empty() || totals.back() != progress.totalBytes) totals.push_back(progress.totalBytes);
    return !onProgress || onProgress(progress);
}

void RecordingEvents::ends(const MemberReport& report) {
    expectOwnThread();
    std::string line = kWords.at(static_cast<std::size_t>(report.outcome));
    line.append(" ").append(report.member.name);
    if (!report.file.empty()) line.append(" > ").append(below(report.file));
    if (report.renamed) line += " renamed";
    if (report.code != kOk) line.append(" ").append(hex(report.code));
    reports.push_back(line);
}

ReplaceAnswer RecordingEvents::askReplace(const ReplaceQuestion& question) {
    expectOwnThread();
    replaceQuestions.push_back(below(question.file) + ": " + std::to_string(question.existingSize) + " bytes");
    if (replaceAnswers.empty()) return ReplaceAnswer::kCancel;
    const ReplaceAnswer answer = replaceAnswers.front();
    replaceAnswers.pop_front();
    return answer;
}

std::optional<std::string> RecordingEvents::askPassword(const Member& member, unsigned attempt) {
    expectOwnThread();
    passwordQuestions.push_back(member.name + " " + std::to_string(attempt));
    if (passwords.empty()) return std::nullopt;
    std::string answer = passwords.front();
    passwords.pop_front();
    return answer;
}

bool RecordingEvents::askDiskSpace(std::uint64_t needed, std::uint64_t available) {
    expectOwnThread();
    spaceQuestions.push_back(std::to_string(needed) + " of " + std::to_string(available));
    return goOnWithoutSpace;
}

}  // namespace archiver::test
