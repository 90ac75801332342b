#pragma once
#include <optional>
#include <string>

#include "shell/window_handle.h"

namespace tovar {

/// What a user is asked for by the box "Enter the comment".
class CommentSource {
public:
    virtual ~CommentSource() = default;
    /// @return nullopt when the user gives none
    [[nodiscard]] virtual std::optional<std::wstring> ask(WindowHandle owner) = 0;
};

/// Has none.
class NoComments final : public CommentSource {
public:
    [[nodiscard]] std::optional<std::wstring> ask(WindowHandle) override { return std::nullopt; }
};

/// The text of the question for a comment.
inline constexpr wchar_t kCommentQuestion[] = L"Enter the comment";

}  // namespace tovar
