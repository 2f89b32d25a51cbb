#pragma once

namespace OviTool {

/// Keeps the library running while it lives. Handles must not outlive it.
class Session {
public:
    Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;
    ~Session();
};

} // namespace OviTool
