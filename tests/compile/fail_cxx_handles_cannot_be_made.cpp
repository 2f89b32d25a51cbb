// In C++, handles only point: hosts can neither make nor copy what is behind them.
#include "ovi/ovi.h"

void MakeHandles(OviTemplate* mesh);

void MakeHandles(OviTemplate* mesh) {
    OviObject object;            // error
    OviTemplate copy(*mesh);     // error
    auto* made = new OviAsset(); // error
}
