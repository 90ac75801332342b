#pragma once
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

#include "shell/window_handle.h"

namespace tovar {

/// A question before work that changes files, and what is shown while the work runs.
struct Confirmation {
    std::wstring question;
    std::wstring gap;   ///< line ends between the question and the list
    std::wstring list;  ///< what the work is done with, a line each; can be very long
    std::wstring note;  ///< what else the user has to know before he answers
    std::wstring yes = L"&Yes", no = L"&No";
    std::wstring progress;  ///< caption while the work runs

    /// @return the whole message, with CR LF before the note
    [[nodiscard]] std::wstring message() const;
};

/// @param list  members, CR LF behind each
[[nodiscard]] Confirmation confirmExtraction(std::wstring_view list);
[[nodiscard]] Confirmation confirmDeletion(std::wstring_view list);
/// @param count  of the files and folders to be added
[[nodiscard]] Confirmation confirmCompression(std::size_t count);

/// The dialog that asks, and stays with the progress caption until the work is done.
class Confirmations {
public:
    /// @param window  the dialog, for windows that are to stand over it
    using Work = std::function<void(WindowHandle window)>;

    virtual ~Confirmations() = default;
    /// @param owner  null = none
    /// @param work   called once the user has agreed. What it throws comes out of the call when the dialog has closed.
    /// @return whether the user has agreed
    virtual bool ask(WindowHandle owner, const Confirmation& confirmation, const Work& work) = 0;
    /// Declines what is asked over a window, if anything is. A question that is answered goes when its work is done.
    virtual void decline(WindowHandle owner) noexcept = 0;
};

}  // namespace tovar
