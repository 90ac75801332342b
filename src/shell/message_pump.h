#pragma once

namespace tovar {

/// The message queue of the user-interface thread.
class MessagePump {
public:
    virtual ~MessagePump() = default;
    /// Dispatches the messages that wait now; returns without waiting for more.
    virtual void processPending() = 0;
};

}  // namespace tovar
