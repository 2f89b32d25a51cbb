/* The smallest host. The header that it includes is made by the test: all public headers. */
#include "all-headers.h"

int main(void) {
    Ovi_Initialize();
    Ovi_Terminate();
    return 0;
}
