#include "settings/config_presenter.h"

#include <algorithm>

namespace tovar {
namespace {

constexpr std::wstring_view kMissing = L"not installed";
constexpr std::wstring_view kUnusable = L"cannot be used";
constexpr std::wstring_view kUnusableHint = L"It cannot be used: it is too old or damaged, or has just been installed.";

}  // namespace

void ConfigPresenter::onLoad() {
    const ArchiveKind effective = recomputeEffective();
    for (std::size_t box = 0; box < kArchiverBoxes.size(); ++box) {
        const auto& [use, word] = kArchiverBoxes[box];
        const std::wstring version = inventory_.versionOf(use);
        view_.showBox(box, std::wstring(word) + L' ' + version, !version.empty(), (effective & use) != 0);
    }
}

void ConfigPresenter::onOk() {
    if (answered_) return;
    answered_ = true;
    ArchiveKind setting = kind::kNone;
    for (std::size_t box = 0; box < kArchiverBoxes.size(); ++box) {
        if (view_.boxValue(box) != 0) setting |= kArchiverBoxes[box].use;
    }
    settings_.setArchiverSetting(setting);
    recomputeEffective();
    settings_.saveSettings();
    view_.close();
}

void ConfigPresenter::onCancel() {
    if (answered_) return;
    discard();
    view_.close();
}

void ConfigPresenter::onGone() {
    if (!answered_) discard();
}

void ConfigPresenter::onDetails() {
    details_ = !details_;
    if (!details_) {
        view_.hideDetails();
        return;
    }
    // Some libraries serve two boxes.
    std::vector<LibraryDetails> libraries;
    for (const ArchiverBox& box : kArchiverBoxes) {
        const std::wstring library = inventory_.libraryOf(box.use);
        if (std::ranges::find(libraries, library, &LibraryDetails::library) != libraries.end()) continue;
        libraries.push_back(detailsOf(box.use));
    }
    view_.showDetails(libraries);
}

std::wstring ConfigPresenter::hintOf(std::size_t box) const {
    const LibraryDetails details = detailsOf(kArchiverBoxes[box].use);
    if (details.path.empty()) return details.library + L" is " + std::wstring(kMissing) + L'.';
    if (details.version == kUnusable) return details.path + L"\r\n" + std::wstring(kUnusableHint);
    return details.path;
}

ArchiveKind ConfigPresenter::recomputeEffective() {
    const ArchiveKind effective = settings_.ArchiverSetting() & inventory_.available();
    inventory_.setEffective(effective);
    return effective;
}

/// The boxes were never read, and the effective mask is what it was before the dialog.
void ConfigPresenter::discard() {
    answered_ = true;
    settings_.loadSettings();
}

LibraryDetails ConfigPresenter::detailsOf(ArchiveKind use) const {
    LibraryDetails details{inventory_.libraryOf(use), inventory_.versionOf(use), inventory_.pathOf(use)};
    if (details.path.empty()) {
        details.version = kMissing;
    } else if (details.version.empty()) {
        details.version = kUnusable;
    }
    return details;
}

}  // namespace tovar
