#include "archivers/commands/question_texts.h"

#include <algorithm>

#include "archivers/commands/amount_texts.h"
#include "archivers/commands/command_paths.h"
#include "archivers/commands/library_settings.h"
#include "archivers/commands/shown_names.h"
#include "archivers/formats/moments.h"

namespace archiver {
namespace {

std::optional<Moment> timeOf(const Member& member) {
    if (member.written) return member.written;
    return momentOfDosStamp({member.dosDate, member.dosTime});
}

std::string sizeAndTime(std::uint64_t size, const std::optional<Moment>& time) {
    return exactSizeText(size) + ", " + timeText(time);
}

}  // namespace

ReplaceFacts factsOf(const ReplaceQuestion& question) {
    constexpr std::int64_t kTolerance = 2;  // seconds: what file systems and archives round to
    const std::optional<Moment> archivedTime = timeOf(question.member);
    ReplaceFacts facts{shownName(utf8Of(question.file)), sizeAndTime(question.existingSize, question.existingTime),
                       sizeAndTime(question.member.originalSize, archivedTime)};
    if (archivedTime && question.existingTime) {
        if (archivedTime->seconds > question.existingTime->seconds + kTolerance) facts.archived += ", newer";
        if (archivedTime->seconds < question.existingTime->seconds - kTolerance) facts.archived += ", older";
    }
    return facts;
}

std::vector<unsigned> processorChoices(unsigned ofMachine, unsigned current) {
    const unsigned own = std::clamp(ofMachine, 1U, kMostProcessors);
    std::vector<unsigned> choices;
    for (unsigned choice = 0; choice <= own; ++choice) choices.push_back(choice);
    if (current > own && current <= kMostProcessors) choices.push_back(current);
    return choices;
}

std::string processorText(unsigned choice) {
    return choice == 0 ? std::string(texts::kAllProcessors) : std::to_string(choice);
}

}  // namespace archiver
