#include "browser/progress_presenter.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

#include "shell/letter_case.h"

namespace tovar {
namespace {

bool isAmount(float number) { return std::isfinite(number) && number >= 0; }

/// To the nearest whole number, halves to the even one; the rounding mode of the host's process does not matter.
int rounded(double number) {
    const double below = std::floor(number);
    const double rest = number - below;
    const auto whole = static_cast<int>(below);
    return rest > 0.5 || (rest == 0.5 && whole % 2 != 0) ? whole + 1 : whole;
}

/// Whole kilobytes: what has begun does not count.
std::uint64_t kilobytes(float bytes) {
    constexpr auto kMost = std::numeric_limits<std::uint64_t>::max();
    const double number = static_cast<double>(bytes) / 1024;
    return number < static_cast<double>(kMost) ? static_cast<std::uint64_t>(number) : kMost;
}

}  // namespace

void ProgressPresenter::onLoad() {
    open_ = true;
    canceled_ = false;
    value_ = maximum_ = 0;
    shownPercentage_.reset();
    view_.setFolder({});
    view_.setFile({});
    view_.setSize({});
    view_.setSummary({});
    view_.setCaption(title_);
}

void ProgressPresenter::onCancel() {
    if (!open_) return;
    open_ = false;
    canceled_ = true;
    view_.close();
}

void ProgressPresenter::onGone() {
    if (!open_) return;
    open_ = false;
    canceled_ = true;
}

void ProgressPresenter::onClose() {
    if (!open_) return;
    open_ = false;
    view_.close();
}

void ProgressPresenter::SetCaption(std::wstring_view title) {
    title_ = title;
    if (open_) view_.setCaption(title_);
}

void ProgressPresenter::Summary(std::wstring_view text) {
    if (open_ && !text.empty()) view_.setSummary(foldCase(text));
}

void ProgressPresenter::SetPrg1(float processed, float total) {
    if (isAmount(processed)) value_ = processed;
    if (isAmount(total)) maximum_ = total;
    if (open_ && maximum_ > 0) refresh();
    pump_.processPending();
}

void ProgressPresenter::showFolder(std::wstring_view path) {
    if (open_) view_.setFolder(path);
}

void ProgressPresenter::showFile(std::wstring_view name) {
    if (open_) view_.setFile(name);
}

void ProgressPresenter::refresh() {
    // A file can grow while it is packed; a bar is never more than full.
    const float value = std::min(value_, maximum_);
    // The product of a single-precision number and 100 is exact here, and so halves are halves: 575 of 1000 are 57.5 %,
    // while 0.575 times 100 is less.
    const int percentage = rounded(static_cast<double>(value) * 100 / static_cast<double>(maximum_));
    if (percentage == shownPercentage_) return;
    shownPercentage_ = percentage;
    view_.setBar(percentage);
    view_.setSize(groupedNumber(kilobytes(value), regional_) + L"/" + groupedNumber(kilobytes(maximum_), regional_) +
                  L" KBytes processed");
    view_.setCaption(std::to_wstring(percentage) + L" % " + title_);
}

}  // namespace tovar
