#include "host/console/zip_progress.h"

#include <algorithm>
#include <string>

namespace tovar::host {
namespace {

class Line final : public ArcProgress {
public:
    explicit Line(ConsoleOutput& output) : seen_(output.errorsAreSeen()), line_(output) {}

    void SetCaption(std::wstring_view) override {}
    void Summary(std::wstring_view) override {}
    void SetPrg1(float processed, float total) override {
        if (processed >= 0 && total > 0) share_ = std::min(100, static_cast<int>(100 * processed / total));
        show();
    }
    [[nodiscard]] bool Canceled() const override { return false; }
    void showFolder(std::wstring_view) override {}
    void showFile(std::wstring_view name) override {
        name_ = name;
        show();
    }

private:
    void show() {
        if (seen_ && !name_.empty()) line_.showShare(name_, share_);
    }

    bool seen_;
    ProgressLine line_;
    std::wstring name_;
    int share_ = 0;
};

}  // namespace

std::unique_ptr<ArcProgress> ZipProgress::show(WindowHandle) { return std::make_unique<Line>(output_); }

}  // namespace tovar::host
