#pragma once

class World;

/// Makes the call that the next bytes of the input say; inside of callbacks only one that is
/// allowed there.
void RunNextCall(World& world);
