#include "archivers/unpacking/password_attempts.h"

#include <vector>

namespace archiver {
namespace {

constexpr unsigned kMostQuestions = 3;

}  // namespace

/// Formats that keep nothing to check a password by give garbage for a wrong one, and notice it at the checksum or when
/// it does not unpack. Once a password has opened a member of the archive, the same signs mean damage.
bool PasswordAttempts::isWrong(ReturnCode code) const noexcept {
    return code == kPasswordFile || (!opened_ && (code == kFileCrc || code == kHuffmanCode || code == kCannotRead));
}

ReturnCode PasswordAttempts::open(const Member& member,
                                  const std::function<ReturnCode(const std::string& password)>& attempt) {
    const auto tried = [&](const std::string& password) {
        const ReturnCode code = attempt(password);
        // An empty member opens with anything, and so tells nothing.
        if (code == kOk && member.originalSize != 0 && !password.empty()) opened_ = password;
        return code;
    };

    // What worked for the last member most likely works for this one: it goes first. Without any password the attempt
    // shows what is no matter of passwords, such as an unknown method.
    std::vector<std::string> known;
    if (opened_) known.push_back(*opened_);
    if (!opened_ || *opened_ != given_) known.push_back(given_);
    for (const std::string& password : known) {
        const ReturnCode code = tried(password);
        if (!isWrong(code)) return code;
    }
    for (unsigned question = 1; mayAsk_ && question <= kMostQuestions; ++question) {
        const std::optional<std::string> answer = events_.askPassword(member, question);
        mayAsk_ = answer.has_value();
        if (!answer) break;
        const ReturnCode code = tried(*answer);
        if (!isWrong(code)) return code;
    }
    return kPasswordFile;
}

}  // namespace archiver
