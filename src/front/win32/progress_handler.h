#pragma once
#include <windows.h>

#include <oleauto.h>

#include <string>

#include "front/automation/automation.h"
#include "front/win32/com_support.h"

namespace tovar {

/// A script's object that hears how an operation gets on: its method OnProgress(path, done, total) is called, or the
/// object itself where it is a function. False as the answer cancels; no answer goes on. An error ends the operation.
class ProgressHandler final : public ProgressListener {
public:
    explicit ProgressHandler(IDispatch& object) : object_(shareObject(&object)) {}

    Answer onProgress(std::wstring_view path, double done, double total) override;
    [[nodiscard]] std::wstring failure() const override { return failure_; }

private:
    ComOwner<IDispatch> object_;
    std::wstring failure_;
};

}  // namespace tovar
