#pragma once

namespace Kor {

/// What begins at an address.
struct ObjectAt {
    enum State {
        kNothing, ///< Nothing that the library knows of.
        kDead,    ///< An object that was deleted, of the class below.
        kAlive,
    };
    State state = kNothing;
    int classId = 0;
};

} // namespace Kor
