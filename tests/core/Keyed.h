#pragma once

#include <string>
#include <string_view>
#include <utility>

/// The least that the sorted lists ask of an object.
struct Keyed {
    explicit Keyed(std::string text) : key(std::move(text)) {}
    std::string_view GetKey() const { return key; }

    std::string key;
};
