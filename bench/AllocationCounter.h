#pragma once

/// How often the process has asked for memory so far (malloc, calloc, realloc, operator new), or -1
/// where that cannot be counted.
long CountAllocations();
