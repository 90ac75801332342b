#include "archivers/commands/progress_meter.h"

#include <algorithm>

#include "archivers/commands/amount_texts.h"

namespace archiver {
namespace {

using namespace std::chrono_literals;

constexpr ProgressTime kRateSpan = 5s;  ///< the rate is the mean over so long
constexpr ProgressTime kLeastForRate = 300ms;
constexpr ProgressTime kLeastForRemaining = 1s;  ///< an earlier estimate would jump
constexpr ProgressTime kMessagesEvery = 10ms;
constexpr ProgressTime kNewsEvery = 100ms;
constexpr ProgressTime kBeforeAppearing = 500ms;

unsigned perMilleOf(std::uint64_t done, std::uint64_t total) noexcept {
    if (total == 0) return 0;
    if (done >= total) return 1000;
    const double part = static_cast<double>(done) / static_cast<double>(total) * 1000;
    return std::min(static_cast<unsigned>(part), 999U);
}

/// From a minute on in steps of five seconds, so that it does not flicker.
std::string remainingText(std::uint64_t left, std::uint64_t perSecond) {
    std::uint64_t seconds = left / perSecond + (left % perSecond != 0 ? 1 : 0);
    if (seconds > 60 && seconds < 600) seconds = (seconds + 4) / 5 * 5;
    const bool counted = seconds > 0 && seconds < 24 * 60 * 60;
    return std::string(counted ? "About " : "").append(durationText(seconds)).append(" remaining");
}

}  // namespace

void ProgressMeter::note(const UnpackProgress& progress, ProgressTime now) {
    // A total that the work has passed was a lie of the headers.
    const bool byArchive = progress.totalBytes == 0 || progress.bytes > progress.totalBytes;
    total_ = byArchive ? progress.archiveSize : progress.totalBytes;
    const std::uint64_t done = std::min(byArchive ? progress.archiveBytes : progress.bytes, total_);
    if (byArchive != byArchive_) samples_.clear();
    byArchive_ = byArchive;

    if (!samples_.empty() && samples_.back().when >= now) samples_.pop_back();
    samples_.push_back({now, progress.bytes, done});
    while (samples_.size() > 2 && samples_[1].when + kRateSpan <= now) samples_.pop_front();
}

void ProgressMeter::passOver(ProgressTime idle) {
    for (Sample& sample : samples_) sample.when += idle;
}

std::uint64_t ProgressMeter::perSecond(std::uint64_t Sample::*amount, ProgressTime least) const {
    if (samples_.empty()) return 0;
    const Sample& first = samples_.front();
    const Sample& last = samples_.back();
    const ProgressTime span = last.when - first.when;
    if (span < least || last.*amount < first.*amount) return 0;
    return static_cast<std::uint64_t>(static_cast<double>(last.*amount - first.*amount) * 1000 /
                                      static_cast<double>(span.count()));
}

ProgressPicture ProgressMeter::picture() const {
    ProgressPicture picture;
    picture.title = title_;
    if (samples_.empty()) return picture;
    const Sample& last = samples_.back();
    picture.amount = sizeText(last.bytes);
    if (total_ > 0) {
        picture.perMille = perMilleOf(last.done, total_);
        picture.title = std::to_string(picture.perMille / 10) + "% - " + title_;
        if (!byArchive_) picture.amount += " of " + sizeText(total_);
    }
    if (const std::uint64_t rate = perSecond(&Sample::bytes, kLeastForRate); rate > 0) picture.rate = rateText(rate);
    if (const std::uint64_t rate = perSecond(&Sample::done, kLeastForRemaining); rate > 0 && last.done < total_) {
        picture.remaining = remainingText(total_ - last.done, rate);
    }
    return picture;
}

ProgressSchedule::Due ProgressSchedule::at(ProgressTime now) noexcept {
    if (!begun_) {
        begun_ = true;
        start_ = nextMessages_ = nextNews_ = now;
    }
    Due due;
    if (now < nextMessages_) return due;
    due.messages = true;
    nextMessages_ = now + kMessagesEvery;
    due.appear = !shown_ && now - start_ >= kBeforeAppearing;
    due.news = due.appear || now >= nextNews_;
    if (due.news) nextNews_ = now + kNewsEvery;
    return due;
}

void ProgressSchedule::passOver(ProgressTime idle) noexcept {
    start_ += idle;
    nextMessages_ += idle;
    nextNews_ += idle;
}

}  // namespace archiver
