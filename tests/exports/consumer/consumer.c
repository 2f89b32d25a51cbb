/* The smallest host: starts the library that the installed package gave it, uses it, and stops it. */
#include "ovi/OviLibrary.h"

int main(void) {
    Ovi_Initialize();
    Ovi_Terminate();
    return 0;
}
