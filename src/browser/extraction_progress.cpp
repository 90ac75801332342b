#include "browser/extraction_progress.h"

#include "shell/paths.h"

namespace tovar {
namespace {

constexpr std::wstring_view kCaption = L"Extracting...";
constexpr std::chrono::milliseconds kPatience{500}, kInterval{40};

}  // namespace

std::chrono::milliseconds steadyMilliseconds() {
    return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now().time_since_epoch());
}

ExtractionProgress::ExtractionProgress(ProgressDialogs& dialogs, MessagePump& pump, const ExtractionClock& clock,
                                       const ExtractRequest& request)
    : dialogs_(dialogs),
      pump_(pump),
      clock_(clock),
      owner_(request.owner),
      archive_(FileNamePart(request.archive)),
      begin_(clock_()),
      last_(begin_) {}

bool ExtractionProgress::step(const ExtractProgress& progress) {
    const std::chrono::milliseconds now = clock_();
    // To look for messages costs more than a small member.
    if (now - last_ < kInterval) return dialog_ == nullptr || !dialog_->Canceled();
    if (dialog_ == nullptr && now - begin_ >= kPatience) show();
    if (dialog_ != nullptr) {
        if (!progress.file.empty()) {
            dialog_->showFolder(StripTrailingSeparator(ParentPath(progress.file)));
            dialog_->showFile(progress.member);
        }
        dialog_->SetPrg1(static_cast<float>(progress.done), static_cast<float>(progress.total));
    } else {
        pump_.processPending();
    }
    last_ = clock_();
    return dialog_ == nullptr || !dialog_->Canceled();
}

void ExtractionProgress::show() {
    dialog_ = dialogs_.show(owner_);
    dialog_->SetCaption(kCaption);
    dialog_->Summary(archive_);
}

}  // namespace tovar
