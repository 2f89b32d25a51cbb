#pragma once

#include <cstdlib>
#include <string>

#include <unistd.h>

/// Whom permissions bind while this lives, also when the tests are run by root: the user nobody,
/// and of a group if one is named.
class OrdinaryUser {
public:
    explicit OrdinaryUser(gid_t group = getegid()) : user_(geteuid()), group_(getegid()) {
        bound_ = user_ != 0 || (setegid(group) == 0 && seteuid(kNobody) == 0);
    }
    ~OrdinaryUser() {
        if (seteuid(user_) != 0 || setegid(group_) != 0)
            std::abort();
    }
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;

    bool IsBound() const { return bound_; }

    /// Whether the directories above a path let this user in.
    bool CanReach(const std::string& path) const {
        return bound_ && eaccess(path.c_str(), F_OK) == 0;
    }

private:
    static constexpr uid_t kNobody = 65534;
    uid_t user_;
    gid_t group_;
    bool bound_ = false;
};
