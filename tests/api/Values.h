#pragma once

#include <string>

#include "ovi/ovi.h"

/// A value block that goes back to its type.
class Block {
public:
    Block(OviType* type, const void* initial, int count)
        : type_(type), value_(OviType_NewValue(type, initial, count)), count_(count) {}
    ~Block() { OviType_DeleteValue(type_, value_, count_); }
    Block(const Block&) = delete;
    Block& operator=(const Block&) = delete;

    void* Get() const { return value_; }
    template <class T> T& At(int index) const { return static_cast<T*>(value_)[index]; }

    /// Reads a text into an element and gives what the library gives.
    int Read(const char* text, int index = 0) const {
        return OviType_GetValueFromString(type_, text, value_, index);
    }

    /// The text of an element.
    std::string Text(int index = 0) const {
        char buffer[256];
        const int length = OviType_GetValueAsString(type_, value_, index, buffer);
        return {buffer, static_cast<size_t>(length)};
    }

private:
    OviType* type_;
    void* value_;
    int count_;
};

/// The built-in or loaded plain type of that name.
inline OviType* TypeNamed(const char* name) {
    return OviTemplateManager_GetType(name);
}

/// The text of a template file with the given elements.
inline std::string TemplateFile(const std::string& elements) {
    return "<?xml version=\"1.0\"?>\n<templates>\n" + elements + "\n</templates>\n";
}

/// The declaration of a type as XML, asked for as hosts do: first the size, then the text.
inline std::string DeclarationOf(OviType* type, int indent = 0) {
    int size = 0;
    OviType_WriteToXML(type, indent, &size, nullptr);
    std::string text(static_cast<size_t>(size), '?');
    OviType_WriteToXML(type, indent, &size, text.data());
    text.pop_back(); // the NUL
    return text;
}
