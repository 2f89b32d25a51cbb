// The packed form of values, byte for byte, at every alignment, buffer size and buffer address.

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "api/Host.h"
#include "api/Values.h"

namespace {

constexpr int kRoom = 128;       // bytes around and behind the packed ones that are looked at
constexpr char kUntouched = '#'; // what they hold before

/// Memory that begins on a multiple of all alignments in use, so that an offset decides them.
class Memory {
public:
    Memory() {
        const auto over = reinterpret_cast<std::uintptr_t>(raw_) % kMultiple;
        bytes = raw_ + (over == 0 ? 0 : kMultiple - over);
        std::fill_n(bytes, kRoom, kUntouched);
    }
    std::string Text() const { return {bytes, kRoom}; }

    char* bytes;

private:
    static constexpr std::uintptr_t kMultiple = 16 * 3;
    char raw_[kRoom + kMultiple];
};

/// The rules of packing once more, on plain bytes: what the memory holds afterwards.
class Expected {
public:
    Expected(int offset, int size) : memory_(kRoom, kUntouched), start_(offset), size_(size) {}

    int Used() const { return position_; }
    int Left() const { return size_ - position_; }
    const std::string& Text() const { return memory_; }

    int PaddingFor(int alignment) const {
        const int over = alignment < 1 ? 0 : (start_ + position_) % alignment;
        return over == 0 ? 0 : alignment - over;
    }
    void Zero(int count) { Put(std::string(static_cast<size_t>(std::max(count, 0)), '\0')); }
    void Put(const std::string& bytes) {
        memory_.replace(static_cast<size_t>(start_ + position_), bytes.size(), bytes);
        position_ += static_cast<int>(bytes.size());
    }
    void PutCount(int alignment, int count) {
        Zero(std::min(PaddingFor(alignment), Left()));
        if (Left() < 4)
            return;
        Zero(std::min(PaddingFor(4), Left()));
        Zero(std::min(4, Left()));
        std::memcpy(&memory_[static_cast<size_t>(start_)], &count, 4); // at the very first byte
    }

private:
    std::string memory_;
    int start_;
    int size_;
    int position_ = 0;
};

class PackingTest : public HostTest {
protected:
    /// A clone of a built-in type, with that dimension and alignment, registered under "Packed".
    OviType* Make(const std::string& base, int dimension, int alignment) {
        const std::string name = base + std::to_string(dimension);
        if (!TypeNamed(name.c_str())) {
            const std::string text = "<type name='" + name + "' type='" + base + "' dim='" +
                                     std::to_string(dimension) + "'/>";
            const std::string path = WriteFile(name + ".template", TemplateFile(text));
            EXPECT_TRUE(OviTemplateManager_LoadTemplateFile(path.c_str()));
        }
        OviType* type = TypeNamed(name.c_str());
        OviType_SetAlignment(type, alignment);
        return type;
    }

    /// Packs into memory at the offset and compares all of it with what is expected.
    static void Check(OviType* type, const void* value, int count, int offset, int size,
                      const Expected& expected) {
        Memory memory;
        const int used =
            OviType_WriteValueToBinary(type, value, count, memory.bytes + offset, size);
        ASSERT_EQ(used, expected.Used()) << Where(type, count, offset, size);
        ASSERT_EQ(memory.Text(), expected.Text()) << Where(type, count, offset, size);
    }

    static std::string Where(OviType* type, int count, int offset, int size) {
        return std::string(OviType_GetFullName(type)) + " alignment " +
               std::to_string(OviType_GetAlignment(type)) + " count " + std::to_string(count) +
               " offset " + std::to_string(offset) + " size " + std::to_string(size);
    }
};

struct NumberCase {
    const char* name;
    int width;
};

void PrintTo(const NumberCase& number, std::ostream* out) {
    *out << number.name;
}

class NumberPackingTest : public PackingTest, public ::testing::WithParamInterface<NumberCase> {
protected:
    /// Elements with bytes that tell them apart.
    std::string Elements() const {
        std::string bytes;
        for (int i = 0; i < 3 * GetParam().width; ++i)
            bytes += static_cast<char>(i + 1);
        return bytes;
    }

    void CheckAll(OviType* type, int dimension, int count, const std::string* elements) {
        const int alignment = OviType_GetAlignment(type);
        const auto width = static_cast<size_t>(GetParam().width);
        for (int offset = 0; offset < 17; ++offset) {
            for (int size = 0; size <= 40 && !HasFatalFailure(); ++size) {
                Expected expected(offset, size);
                if (dimension == 0)
                    expected.PutCount(alignment, count);
                for (int i = 0; i < count && expected.Left() >= GetParam().width; ++i) {
                    expected.Put(elements ? elements->substr(static_cast<size_t>(i) * width, width)
                                          : std::string(width, '\0'));
                    expected.Zero(expected.PaddingFor(alignment));
                }
                Check(type, elements ? elements->data() : nullptr, count, offset, size, expected);
            }
        }
    }
};

TEST_P(NumberPackingTest, FollowsTheRulesAtEveryAlignmentAddressAndSize) {
    const std::string elements = Elements();
    for (const int dimension : {0, 1, 3}) {
        for (const int alignment : {1, 2, 3, 4, 8, 16}) {
            OviType* type = Make(GetParam().name, dimension, alignment);
            for (const int count : {0, 1, 3})
                CheckAll(type, dimension, count, &elements);
        }
    }
}

TEST_P(NumberPackingTest, WritesZeroesForAnAbsentValue) {
    for (const int dimension : {0, 1})
        CheckAll(Make(GetParam().name, dimension, 8), dimension, 3, nullptr);
}

TEST_P(NumberPackingTest, TakesAlignmentsBelowOneAsOne) {
    const std::string elements = Elements();
    for (const int alignment : {0, -8})
        CheckAll(Make(GetParam().name, 0, alignment), 0, 3, &elements);
}

TEST_P(NumberPackingTest, WritesNothingWithoutABuffer) {
    const std::string elements = Elements();
    for (const int dimension : {0, 1}) {
        OviType* type = Make(GetParam().name, dimension, 4);
        EXPECT_EQ(OviType_WriteValueToBinary(type, elements.data(), 1, nullptr, 100), 0);
        for (const int size : {-1, -1000})
            Check(type, elements.data(), 1, 3, size, Expected(3, 0));
    }
}

INSTANTIATE_TEST_SUITE_P(Types, NumberPackingTest,
                         ::testing::Values(NumberCase{"BOOL", 1}, NumberCase{"INT8", 1},
                                           NumberCase{"UINT8", 1}, NumberCase{"INT16", 2},
                                           NumberCase{"UINT16", 2}, NumberCase{"INT32", 4},
                                           NumberCase{"UINT32", 4}, NumberCase{"INT64", 8},
                                           NumberCase{"UINT64", 8}, NumberCase{"FLOAT", 4},
                                           NumberCase{"DOUBLE", 8}),
                         [](const auto& test) { return std::string(test.param.name); });

// -- examples by hand -----------------------------------------------------------------------------

TEST_F(PackingTest, APaddedElementMayRunPastTheEnd) {
    OviType* type = Make("INT16", 1, 8);
    const short number = 0x0201;
    Memory memory;
    EXPECT_EQ(OviType_WriteValueToBinary(type, &number, 1, memory.bytes, 2), 8);
    EXPECT_EQ(memory.Text().substr(0, 10), std::string("\1\2\0\0\0\0\0\0##", 10));
}

TEST_F(PackingTest, TheCountStandsAtTheFirstByteNotBehindThePadding) {
    OviType* type = Make("INT32", 0, 4);
    const int numbers[] = {0x11, 0x22};
    Memory memory;
    EXPECT_EQ(OviType_WriteValueToBinary(type, numbers, 2, memory.bytes, 20), 12);
    EXPECT_EQ(memory.Text().substr(0, 13), std::string("\2\0\0\0\x11\0\0\0\x22\0\0\0#", 13));
    // Two bytes off: the padding comes first, the count is written over it.
    Memory odd;
    EXPECT_EQ(OviType_WriteValueToBinary(type, numbers, 2, odd.bytes + 2, 20), 14);
    EXPECT_EQ(odd.Text().substr(0, 17), std::string("##\2\0\0\0\0\0\x11\0\0\0\x22\0\0\0#", 17));
}

TEST_F(PackingTest, NumbersAreLittleEndian) {
    Memory memory;
    const double one = 1;
    EXPECT_EQ(OviType_WriteValueToBinary(TypeNamed("DOUBLE"), &one, 1, memory.bytes, 8), 8);
    EXPECT_EQ(memory.Text().substr(0, 8), std::string("\0\0\0\0\0\0\xf0\x3f", 8));
}

// -- texts ----------------------------------------------------------------------------------------

TEST_F(PackingTest, TextsAreLengthAndCharactersAlignedToFour) {
    const char* const texts[] = {"hello", "x"};
    Memory memory;
    EXPECT_EQ(OviType_WriteValueToBinary(TypeNamed("STRING"), texts, 2, memory.bytes, 100), 17);
    EXPECT_EQ(memory.Text().substr(0, 18), std::string("\5\0\0\0hello\0\0\0\1\0\0\0x#", 18));
}

TEST_F(PackingTest, TextsFollowTheRulesAtEveryAlignmentAddressAndSize) {
    const char* const texts[] = {"hello", nullptr, "x", "", "abcd"};
    for (const int dimension : {0, 1}) {
        for (const int alignment : {1, 4, 8}) {
            OviType* type = Make("STRING", dimension, alignment);
            for (int place = 0; place < 17 * 48; ++place) {
                const int offset = place / 48;
                const int size = place % 48;
                Expected expected(offset, size);
                if (dimension == 0)
                    expected.PutCount(alignment, 5);
                for (const char* text : texts) {
                    const std::string content = text ? text : "";
                    const int length = static_cast<int>(content.size());
                    if (expected.Left() < expected.PaddingFor(4) + 4 + length)
                        break;
                    expected.Zero(expected.PaddingFor(4));
                    expected.Put(std::string(1, static_cast<char>(length)) + std::string(3, '\0'));
                    expected.Put(content);
                }
                Check(type, texts, 5, offset, size, expected);
            }
        }
    }
}

TEST_F(PackingTest, AnAbsentTextIsOneOfLengthZero) {
    Memory memory;
    EXPECT_EQ(OviType_WriteValueToBinary(TypeNamed("VOID"), nullptr, 2, memory.bytes, 100), 8);
    EXPECT_EQ(memory.Text().substr(0, 9), std::string("\0\0\0\0\0\0\0\0#", 9));
}

TEST_F(PackingTest, TextsWithoutABufferAreNotWritten) {
    const char* text = "text";
    EXPECT_EQ(OviType_WriteValueToBinary(TypeNamed("STRING"), &text, 1, nullptr, 100), 0);
    Check(TypeNamed("STRING"), &text, 1, 0, -1, Expected(0, 0));
}

} // namespace
