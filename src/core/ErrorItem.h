#pragma once

#include <string>
#include <string_view>

#include "core/Object.h"

namespace Kor {

/// One diagnostic: level, source, line, message. It is not copied: Clone gives a bare Object.
class ErrorItem : public Object {
public:
    static constexpr int kClassId = kErrorItemClass;
    KOR_OBJECT_MEMORY

    ErrorItem(int level, const char* sourceName, int lineNumber, const char* message)
        : level_(level), sourceName_(sourceName), message_(message), lineNumber_(lineNumber) {}

    int GetClass() const override { return kClassId; }
    bool ImplementsClass(int id) const override {
        return id == kClassId || Object::ImplementsClass(id);
    }

    int GetLevel() const { return level_; }
    const char* GetSourceName() const { return sourceName_.c_str(); }
    const char* GetMessage() const { return message_.c_str(); }

    /// Room for a source name of some length, and a name that has it: that needs no memory.
    void ReserveSourceName(size_t size) { sourceName_.reserve(size); }
    void SetSourceName(std::string_view name) { sourceName_ = name; }

    /// -1 when the message concerns a whole file.
    int GetLineNumber() const { return lineNumber_; }

private:
    int level_;
    std::string sourceName_;
    std::string message_;
    int lineNumber_;
};

} // namespace Kor
