#pragma once
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

namespace archiver {

/// Objects that are costly to make and serve one user after the other. Any thread may take one; the pool outlives them.
template <class Object>
class ObjectPool {
public:
    /// Gives the object back to its pool.
    struct GiveBack {
        ObjectPool* pool = nullptr;
        void operator()(Object* object) const noexcept { pool->giveBack(object); }
    };
    using Lent = std::unique_ptr<Object, GiveBack>;

    /// One that is free, or a new one.
    Lent take() {
        {
            const std::lock_guard lock(mutex_);
            if (!free_.empty()) {
                Lent lent(free_.back().release(), GiveBack{this});
                free_.pop_back();
                return lent;
            }
        }
        return Lent(new Object, GiveBack{this});
    }

private:
    void giveBack(Object* object) noexcept {
        std::unique_ptr<Object> owned(object);
        try {
            const std::lock_guard lock(mutex_);
            free_.push_back(std::move(owned));
        } catch (...) {
            // No room to keep it: it goes.
        }
    }

    std::mutex mutex_;
    std::vector<std::unique_ptr<Object>> free_;
};

}  // namespace archiver
