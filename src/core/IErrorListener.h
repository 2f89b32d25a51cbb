#pragma once

namespace Kor {

/// The levels of diagnostics, as bits; two more (4 and 8) are counted but never used here.
enum ErrorLevel : int { kError = 1, kWarning = 2 };

/// Receives the diagnostics of readers and of file operations.
class IErrorListener {
public:
    virtual ~IErrorListener() = default;

    /// `lineNumber` is -1 when the message concerns a whole file. The texts are copied.
    virtual void AddErrorItem(int level, const char* sourceName, int lineNumber,
                              const char* message) = 0;
};

} // namespace Kor
