/* The smallest host in C. The header that it includes is made by the test: all public headers. */
#include <stdio.h>
#include <string.h>

#include "all-headers.h"

int main(void) {
    bool named = false;
    Ovi_Initialize();
    OviAsset* stool = OviAssetManager_NewAsset("stool");
    named = strcmp(OviNamedObject_GetName(stool), "stool") == 0;
    printf("%s\n", Ovi_GetVersion());
    Ovi_Terminate();
    return named ? 0 : 1;
}
