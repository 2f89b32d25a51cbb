// Reads the input as texts of values of one type: what they are written as reads back the same, and
// what is packed holds the same elements. The first bytes choose the type and the sizes.

#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>
#include <string>
#include <string_view>
#include <vector>

#include "instances/Instance.h"
#include "manager/TemplateManager.h"
#include "ovi/ovi.h"
#include "schema/AttributeProperty.h"
#include "support/Finding.h"
#include "support/SampleSchema.h"

using namespace Kor;

namespace {

constexpr int kMaxCount = 4;
constexpr int kMaxAlignment = 32;

OviType* ToHandle(const Type& type) {
    return reinterpret_cast<OviType*>(const_cast<Object*>(static_cast<const Object*>(&type)));
}

/// Every type of the registry that values can have, in one order for ever: inputs name their
/// places.
const std::vector<Type*>& AllTypes() {
    static const std::vector<Type*> kTypes = [] {
        Ovi_Initialize();
        OviTemplateManager_LoadTemplateFile(OVI_SOURCE_DIR "/fuzz/Kinds.template");
        OviErrorManager_Clear();
        const TemplateManager& manager = *TemplateManager::Get();
        std::vector<Type*> types;
        for (int i = 0; i < manager.GetTypeCount(); ++i)
            types.push_back(manager.GetTypeAt(i));
        for (int i = 0; i < manager.GetEnumerationCount(); ++i)
            types.push_back(manager.GetEnumerationAt(i));
        for (int i = 0; i < manager.GetTemplateCount(); ++i)
            types.push_back(manager.GetTemplateAt(i));
        auto* odd = ObjectCast<AttributeProperty>(manager.GetProperty("T.odd"));
        types.push_back(odd->GetType());
        return types;
    }();
    return kTypes;
}

// -- values ---------------------------------------------------------------------------------------

/// A value block that is freed in the end.
class Value {
public:
    Value(const Type& type, void* block, int count) : type_(type), block_(block), count_(count) {}
    ~Value();
    Value(const Value&) = delete;
    Value& operator=(const Value&) = delete;

    void* Get() const { return block_; }
    int GetCount() const { return count_; }

    /// The text of an element, by the exported function, into exactly as much memory as it says.
    std::string GetText(int index) const {
        const int length = OviType_GetValueAsString(ToHandle(type_), block_, index, nullptr);
        std::vector<char> buffer(static_cast<size_t>(length));
        Expect(OviType_GetValueAsString(ToHandle(type_), block_, index, buffer.data()) == length,
               "a text has two lengths");
        return {buffer.begin(), buffer.end()};
    }

    std::vector<std::string> GetTexts() const {
        std::vector<std::string> texts;
        for (int i = 0; i < count_; ++i)
            texts.push_back(GetText(i));
        return texts;
    }

private:
    const Type& type_;
    void* block_;
    int count_;
};

/// Deleting a value of a template frees nothing, since a host may still use the instances: they are
/// deleted one by one.
Value::~Value() {
    const bool holdsInstances = ObjectCast<Template>(type_.GetStorageType()) != nullptr;
    OviType_DeleteValue(ToHandle(type_), block_, count_);
    if (!block_ || !holdsInstances)
        return;
    for (int i = 0; i < count_; ++i)
        OviObject_Delete(static_cast<OviObject**>(block_)[i]);
    std::free(block_);
}

void ExpectSameTexts(const char* what, const Value& wanted, const Value& got) {
    for (int i = 0; i < wanted.GetCount(); ++i)
        ExpectSame(what, wanted.GetText(i), got.GetText(i));
}

// -- what is expected of a type -------------------------------------------------------------------

class Examination {
public:
    Examination(const Type& type, const std::vector<std::string>& texts, int bufferSize)
        : type_(type), storage_(type.GetStorageType()), bufferSize_(bufferSize),
          count_(type.GetDimension() > 0 ? type.GetDimension() : static_cast<int>(texts.size())),
          value_(type, OviType_NewValue(ToHandle(type), nullptr, count_), count_) {
        Read(texts, value_);
    }

    void Run() const {
        ExpectNumbersAsTheStandardLibraryReadsThem();
        ExpectTextsToReadBack();
        ExpectCopiesToBeTheSame();
        PackIntoLittle();
        ExpectPackedElements();
        Ask();
    }

private:
    static constexpr int kWord = sizeof(std::int32_t);

    bool Is(int classId) const { return storage_ && storage_->GetClass() == classId; }
    bool IsInteger() const { return Is(kIntTypeClass); }
    bool HoldsTexts() const { return Is(kStringTypeClass); }
    bool HoldsInstances() const { return Is(kTemplateClass); }

    /// Bytes of one element; 0 for what is no number and no truth value.
    int GetWidth() const {
        std::int64_t room = 0;
        const bool scalar = IsInteger() || Is(kFloatTypeClass) || Is(kBoolTypeClass);
        return scalar ? storage_->GetValueFromString("0", &room, 0) : 0;
    }

    void Read(const std::vector<std::string>& texts, const Value& value) const {
        for (int i = 0; i < value.GetCount(); ++i) {
            const std::string& text = texts[static_cast<size_t>(i) % texts.size()];
            OviType_GetValueFromString(ToHandle(type_), text.c_str(), value.Get(), i);
        }
        texts_ = texts;
    }

    // -- texts --------------------------------------------------------------------------------

    /// Integers of all widths are read within 32 bits.
    static std::int32_t ReadInteger(const char* text) {
        const long long read = std::strtoll(text, nullptr, 10);
        return static_cast<std::int32_t>(
            std::clamp<long long>(read, std::numeric_limits<std::int32_t>::min(),
                                  std::numeric_limits<std::int32_t>::max()));
    }

    void ExpectNumbersAsTheStandardLibraryReadsThem() const {
        for (int i = 0; i < count_; ++i) {
            const char* text = texts_[static_cast<size_t>(i) % texts_.size()].c_str();
            if (IsInteger()) {
                const auto wanted = static_cast<std::int64_t>(ReadInteger(text));
                Expect(std::memcmp(&wanted, ElementAt(value_, i),
                                   static_cast<size_t>(GetWidth())) == 0,
                       "an integer is read wrongly");
            } else if (Is(kFloatTypeClass)) {
                ExpectSameNumber(std::strtod(text, nullptr), i);
            }
        }
    }

    void ExpectSameNumber(double wanted, int index) const {
        double got = 0;
        if (GetWidth() == static_cast<int>(sizeof(float))) {
            float narrow = 0;
            std::memcpy(&narrow, ElementAt(value_, index), sizeof narrow);
            got = static_cast<double>(narrow);
            wanted = static_cast<double>(static_cast<float>(wanted));
        } else {
            std::memcpy(&got, ElementAt(value_, index), sizeof got);
        }
        Expect(got == wanted || (std::isnan(got) && std::isnan(wanted)),
               "a number is read wrongly");
        if (std::isfinite(got)) {
            char text[64];
            std::snprintf(text, sizeof text, "%g", got);
            ExpectSame("a number's text", text, value_.GetText(index));
        }
    }

    const char* ElementAt(const Value& value, int index) const {
        return static_cast<const char*>(value.Get()) + static_cast<long>(index) * GetWidth();
    }

    /// 8-bit integers need not: they are written as characters. All others are read within 32 bits.
    bool ReadsBack() const {
        if (!IsInteger())
            return !HoldsInstances();
        for (int i = 0; i < count_; ++i) {
            std::int64_t room = 0;
            storage_->GetValueFromString(value_.GetText(i).c_str(), &room, 0);
            if (std::memcmp(&room, ElementAt(value_, i), static_cast<size_t>(GetWidth())) != 0)
                return false;
        }
        return true;
    }

    void ExpectTextsToReadBack() const {
        Value again(type_, type_.NewValue(nullptr, count_), count_);
        const std::vector<std::string> given = texts_;
        if (!ReadsBack() || !again.Get())
            return;
        Read(value_.GetTexts(), again);
        texts_ = given;
        ExpectSameTexts("a text that was written, read and written", value_, again);
        const int order = type_.CompareValues(value_.Get(), again.Get(), count_);
        Expect(order == -type_.CompareValues(again.Get(), value_.Get(), count_),
               "a comparison depends on the order");
        Expect(order == 0 || Is(kFloatTypeClass), "a value that was read back is another");
        ExpectReadableTextsToReadBack();
    }

    /// The text for template files holds 8-bit integers as numbers.
    void ExpectReadableTextsToReadBack() const {
        for (int i = 0; i < count_; ++i) {
            const std::string text = type_.GetReadableText(value_.Get(), i);
            Value again(type_, type_.NewValue(nullptr, count_), count_);
            type_.GetValueFromString(text.c_str(), again.Get(), i);
            ExpectSame("a text for a template file", text, type_.GetReadableText(again.Get(), i));
        }
    }

    // -- copies and comparisons ----------------------------------------------------------------

    void ExpectCopiesToBeTheSame() const {
        const Value copy(type_, type_.CopyValue(value_.Get(), count_), count_);
        if (!HoldsInstances())
            ExpectSameTexts("a copy", value_, copy);
        const Value made(type_, OviType_NewValue(ToHandle(type_), value_.Get(), count_), count_);
        // As it is documented, a new value of numbers repeats the first element of its source.
        const bool repeatsTheFirst = IsInteger() || Is(kBoolTypeClass);
        for (int i = 0; i < count_ && !HoldsInstances(); ++i)
            ExpectSame("a new value", value_.GetText(repeatsTheFirst ? 0 : i), made.GetText(i));
    }

    void Ask() const {
        OviType* type = ToHandle(type_);
        Expect(OviType_CompareValues(type, value_.Get(), value_.Get(), count_) == 0,
               "a value differs from itself");
        Expect(OviType_GetValueSize(type, value_.Get(), count_) >= 0, "a size is below 0");
        Expect(OviType_CompareValues(type, nullptr, value_.Get(), count_) <= 0,
               "null comes behind a value");
        type_.IsValueValid(value_.Get(), value_.Get(), nullptr, count_);
        type_.IsValueValid(value_.Get(), nullptr, value_.Get(), count_);
    }

    // -- packed -------------------------------------------------------------------------------

    /// Memory ends where packing may no longer write.
    void PackIntoLittle() const {
        std::vector<char> buffer(static_cast<size_t>(bufferSize_ + kMaxAlignment));
        const int used = OviType_WriteValueToBinary(ToHandle(type_), value_.Get(), count_,
                                                    buffer.data(), bufferSize_);
        Expect(used >= 0 && used < bufferSize_ + kMaxAlignment, "packing uses more than there is");
        std::vector<char> zeroes(buffer.size());
        OviType_WriteValueToBinary(ToHandle(type_), nullptr, count_, zeroes.data(), bufferSize_);
    }

    static int RoundUp(int position, int alignment) {
        return (position + alignment - 1) / alignment * alignment;
    }

    void ExpectPackedElements() const {
        if (!value_.Get() || HoldsInstances())
            return;
        const int room = OviType_GetValueSize(ToHandle(type_), value_.Get(), count_) +
                         (count_ + 2) * kMaxAlignment * 2;
        std::vector<char> memory(static_cast<size_t>(room + kMaxAlignment));
        char* packed = memory.data() + kMaxAlignment - // aligned for every type
                       reinterpret_cast<std::uintptr_t>(memory.data()) % kMaxAlignment;
        const int used =
            OviType_WriteValueToBinary(ToHandle(type_), value_.Get(), count_, packed, room);
        int at = 0;
        if (storage_->GetDimension() == 0) {
            Expect(ReadWord(packed) == count_, "the count is packed wrongly");
            at = kWord;
        }
        at = HoldsTexts() ? ExpectPackedTexts(packed, at) : ExpectPackedNumbers(packed, at);
        Expect(at == used, "the packed size is wrong");
    }

    static int ReadWord(const char* from) {
        std::int32_t word = 0;
        std::memcpy(&word, from, sizeof word);
        return word;
    }

    int ExpectPackedNumbers(const char* packed, int at) const {
        for (int i = 0; i < count_; ++i) {
            Expect(std::memcmp(packed + at, ElementAt(value_, i),
                               static_cast<size_t>(GetWidth())) == 0,
                   "a number is packed wrongly");
            at = RoundUp(at + GetWidth(), storage_->GetAlignment());
        }
        return at;
    }

    int ExpectPackedTexts(const char* packed, int at) const {
        for (int i = 0; i < count_; ++i) {
            at = RoundUp(at, kWord);
            const auto length = static_cast<size_t>(ReadWord(packed + at));
            at += kWord;
            ExpectSame("a packed text", value_.GetText(i), std::string(packed + at, length));
            at += static_cast<int>(length);
        }
        return at;
    }

    const Type& type_;
    const Type* storage_;
    int bufferSize_;
    int count_;
    Value value_;
    mutable std::vector<std::string> texts_; // which the value was read from
};

/// Up to kMaxCount texts, with a NUL byte behind each but the last.
std::vector<std::string> Split(std::string_view text) {
    std::vector<std::string> parts;
    for (int i = 1; i < kMaxCount; ++i) {
        const size_t end = text.find('\0');
        if (end == std::string_view::npos)
            break;
        parts.emplace_back(text.substr(0, end));
        text.remove_prefix(end + 1);
    }
    parts.emplace_back(text.substr(0, text.find('\0')));
    return parts;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
    constexpr size_t kHead = 3;
    if (size < kHead)
        return 0;
    const Type& type = *AllTypes()[data[0] % AllTypes().size()];
    Type* storage = const_cast<Type*>(type.GetStorageType());
    const int alignment = storage ? storage->GetAlignment() : 1;
    if (storage && storage->GetClass() != kTemplateClass)
        storage->SetAlignment(1 << data[1] % 6);
    const std::string_view text(reinterpret_cast<const char*>(data) + kHead, size - kHead);
    Examination(type, Split(text), data[2]).Run();
    if (storage)
        storage->SetAlignment(alignment);
    return 0;
}
