#include "core/KeyHash.h"

// Where the random numbers come from differs between systems.
#include "platform/RandomNumber.h"

namespace Kor {

const HashSecrets kHashSecrets = {GetRandomNumber(), GetRandomNumber() | 1};

} // namespace Kor
