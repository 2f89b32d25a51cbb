#pragma once

#include <numeric>
#include <random>
#include <string>
#include <vector>

/// The orders in which things enter and leave lists.
enum class Order { kAscending, kDescending, kScattered };

inline constexpr Order kOrders[] = {Order::kAscending, Order::kDescending, Order::kScattered};

inline const char* NameOf(Order order) {
    switch (order) {
    case Order::kAscending:
        return "ascending";
    case Order::kDescending:
        return "descending";
    default:
        return "in no order";
    }
}

/// The numbers below a count in an order.
inline std::vector<int> NumbersBelow(int count, Order order) {
    std::vector<int> numbers(static_cast<size_t>(count));
    std::iota(numbers.begin(), numbers.end(), 0);
    if (order == Order::kDescending)
        std::vector<int>(numbers.rbegin(), numbers.rend()).swap(numbers);
    if (order == Order::kScattered) {
        std::mt19937 random(7);
        for (size_t i = numbers.size(); i > 1; --i) // the same with every standard library
            std::swap(numbers[i - 1], numbers[random() % i]);
    }
    return numbers;
}

/// A name whose order is that of the numbers.
inline std::string NameFor(const char* stem, int number) {
    return stem + std::to_string(10000000 + number);
}
