#pragma once
#include <cstddef>
#include <memory>
#include <optional>
#include <string>

namespace tovar {

enum class DragButton { Left, Right };

/// A file that is handed over, and what keeps it where it is.
struct HeldFile {
    std::wstring path;                 ///< full
    std::shared_ptr<const void> held;  ///< until nobody reads the file any more
};

/// What a drag offers. Targets may go on asking for some time after the drag.
class DragContents {
public:
    virtual ~DragContents() = default;

    /// @return full path of the file that stands for the members
    [[nodiscard]] virtual std::wstring placeholder() const = 0;
    /// @return the block that describes the members (file_descriptors.h); nullopt when they cannot be described
    [[nodiscard]] virtual std::optional<std::string> descriptors() = 0;
    /// Unpacks the members when they are asked for the first time; messages may run meanwhile.
    /// @param index  of a file among those described
    /// @return nullopt for what cannot be had, and before the user has let the members go
    [[nodiscard]] virtual std::optional<HeldFile> file(std::size_t index) = 0;

    /// The user has let the members go over something that takes them.
    virtual void onDropped() = 0;
    /// @return whether the drag is to end without a drop
    [[nodiscard]] virtual bool isCancelled() const = 0;
};

/// The system's drag and drop.
class DragSource {
public:
    virtual ~DragSource() = default;
    /// Returns when the user has let the button go; messages run meanwhile.
    /// @return whether something took what was dragged, as far as it tells. It may be still at it.
    virtual bool drag(const std::shared_ptr<DragContents>& contents, DragButton button) = 0;
};

}  // namespace tovar
