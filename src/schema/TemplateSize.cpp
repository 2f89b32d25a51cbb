#include "schema/TemplateSize.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <map>
#include <unordered_map>
#include <tuple>
#include <utility>
#include <vector>

// With a value at hand its instances decide which properties count.
#include "instances/GeometryInstance.h"
#include "instances/Instance.h"
#include "instances/PropertyInstance.h"

#include "schema/GeometryProperty.h"
#include "schema/Template.h"

namespace Kor {

namespace {

constexpr std::int64_t kLimit = std::numeric_limits<int>::max();

/// What a parent or a property adds to each element; a parent has no padding in front.
struct Part {
    const Property* property;
    std::int64_t size;
};

/// One template on the way down, with the place reached in it.
struct Frame {
    const Template* type = nullptr;
    Instance* const* elements = nullptr;
    int count = 0;
    int element = 0;
    int nextParent = 0;
    int nextProperty = 0;
    /// The open geometry, measured by its alternates, or by its nodes where there is an instance.
    const GeometryProperty* geometry = nullptr;
    const GeometryInstance* nodes = nullptr;
    int nextAlternate = 0;
    std::int64_t alternates = 0; ///< Their sizes so far.
    std::int64_t size = 0;
    bool cut = false;        ///< Whether a template above it was met again below it.
    std::vector<Part> parts; ///< Of the first of many elements without instances.

    /// Elements without instances are all made of the same parts.
    bool Repeats() const { return !elements && count > 1; }
};

/// The size with a part behind it.
std::int64_t Added(std::int64_t size, const Part& part) {
    const int padding = part.property ? part.property->GetPadding(static_cast<int>(size)) : 0;
    return std::min(size + padding + part.size, kLimit);
}

std::int64_t RoundedUp(std::int64_t size, const Template& type) {
    const int alignment = std::max(type.GetAlignment(), 1);
    const std::int64_t over = size % alignment;
    return std::min(over == 0 ? size : size + alignment - over, kLimit);
}

/// Walks the templates with a stack of its own: parents, and templates as types of properties and
/// of the alternates of geometries.
class Measure {
public:
    std::int64_t Run(const Template& type, Instance* const* elements, int count) {
        Enter(&type, elements, count);
        while (!path_.empty())
            Advance();
        return result_;
    }

private:
    /// The size of a single element, or of several without instances, is the same everywhere and
    /// kept.
    using Key = std::tuple<const Template*, const void*, int>;

    /// Only so many steps are exact in circles of references; beyond, sizes met once are kept.
    static constexpr int kPatience = 100000;

    static Key KeyOf(const Frame& frame) {
        if (!frame.elements)
            return {frame.type, nullptr, frame.count};
        const Instance* element = *frame.elements;
        return {frame.type, element ? static_cast<const void*>(element) : frame.elements, 1};
    }

    static bool MayBeKnown(const Frame& frame) { return !frame.elements || frame.count == 1; }

    void Enter(const Template* type, Instance* const* elements, int count) {
        Frame frame;
        frame.type = type;
        frame.elements = elements;
        frame.count = count;
        result_ = 0;
        if (count <= 0)
            return;
        if (MayBeKnown(frame)) {
            const auto known = known_.find(KeyOf(frame));
            if (known != known_.end()) {
                result_ = known->second;
                return;
            }
        }
        if (IsOpen(*type)) {
            for (size_t at = path_.size(); at > 0 && path_[at - 1].type != type; --at)
                path_[at - 1].cut = true;
            return;
        }
        ++open_[type];
        ++steps_;
        path_.push_back(std::move(frame));
        descended_ = true;
    }

    bool IsOpen(const Template& type) const {
        const auto found = open_.find(&type);
        return found != open_.end() && found->second > 0;
    }

    void Advance() {
        Frame& frame = path_.back();
        descended_ = false;
        if (frame.nextParent < frame.type->GetParentCount())
            AddParent(path_.size() - 1);
        else if (frame.nextProperty < frame.type->GetDeclaredCount())
            AddProperty(path_.size() - 1);
        else
            FinishElement();
    }

    void AddParent(size_t at) {
        Frame& frame = path_[at];
        const Template* parent = frame.type->GetParentAt(frame.nextParent);
        Instance* const* element = frame.elements ? frame.elements + frame.element : nullptr;
        Enter(parent, element, 1);
        if (!descended_)
            Take(at);
    }

    void AddProperty(size_t at) {
        Frame& frame = path_[at];
        const Property* property =
            frame.geometry ? GetAlternate(frame, frame.nextAlternate) : FindSized(frame);
        const auto* geometry = ObjectCast<GeometryProperty>(property);
        if (geometry && CountAlternates(frame, *geometry) > 0) {
            frame.geometry = geometry;
            property = GetAlternate(frame, 0);
        } else if (!frame.geometry && (geometry || !property)) {
            ++frame.nextProperty;
            return;
        }
        const auto* attribute = ObjectCast<AttributeProperty>(property);
        const Type* type = attribute ? attribute->GetType() : nullptr;
        const auto* contained = type ? ObjectCast<Template>(type->GetStorageType()) : nullptr;
        if (contained)
            Enter(contained, nullptr, type->GetDimension());
        else
            result_ = property ? property->GetValueSize() : 0;
        if (!descended_)
            Take(at);
    }

    /// Null for a node that the host has taken away.
    static const Property* GetAlternate(const Frame& frame, int index) {
        if (!frame.nodes)
            return frame.geometry->GetAlternateAt(index);
        const NodeInstance* node = frame.nodes->GetNodeInstanceAt(index);
        return node ? node->GetProperty() : nullptr;
    }

    static int CountAlternates(const Frame& frame, const GeometryProperty& geometry) {
        return frame.nodes ? frame.nodes->GetNodeInstanceCount() : geometry.GetAlternateCount();
    }

    /// The property that sizes the next value: the declared one, or with an element the one that
    /// the element's property instance stands for; null when there is none.
    static const Property* FindSized(Frame& frame) {
        frame.nodes = nullptr;
        const Property* declared = frame.type->PeekDeclaredAt(frame.nextProperty);
        if (!frame.elements)
            return declared;
        Instance* instance = frame.elements[frame.element];
        const PropertyInstance* found =
            instance ? instance->GetPropertyInstance(declared->GetFullName(), true) : nullptr;
        frame.nodes = ObjectCast<GeometryInstance>(found);
        return found ? found->GetProperty() : nullptr;
    }

    /// Adds the size that a parent or a property turned out to have.
    void Take(size_t at) {
        Frame& frame = path_[at];
        if (frame.nextParent < frame.type->GetParentCount()) {
            ++frame.nextParent;
            AddPart(frame, {nullptr, result_});
            return;
        }
        if (frame.geometry && !TakeAlternate(frame))
            return;
        const Property* property = frame.type->PeekDeclaredAt(frame.nextProperty++);
        AddPart(frame, {property, result_});
    }

    static void AddPart(Frame& frame, const Part& part) {
        if (part.size <= 0)
            return;
        frame.size = Added(frame.size, part);
        if (frame.Repeats())
            frame.parts.push_back(part);
    }

    /// Whether the size of the whole geometry is known then: the sum, or 0 once an alternate has
    /// no size.
    bool TakeAlternate(Frame& frame) {
        frame.alternates = result_ < 1 ? 0 : std::min(frame.alternates + result_, kLimit);
        if (result_ > 0 && ++frame.nextAlternate < CountAlternates(frame, *frame.geometry))
            return false;
        result_ = frame.alternates;
        frame.geometry = nullptr;
        frame.nextAlternate = 0;
        frame.alternates = 0;
        return true;
    }

    void FinishElement() {
        Frame& frame = path_.back();
        frame.size = RoundedUp(frame.size, *frame.type);
        frame.nextParent = 0;
        frame.nextProperty = 0;
        if (frame.Repeats())
            Repeat(frame);
        else if (++frame.element < frame.count)
            return;
        const Frame done = std::move(frame);
        path_.pop_back();
        --open_[done.type];
        result_ = std::min(done.size * done.count, kLimit);
        if (MayBeKnown(done) && (!done.cut || steps_ > kPatience))
            known_[KeyOf(done)] = result_;
        if (!path_.empty())
            Take(path_.size() - 1);
    }

    /// Adds the elements behind the first. Their padding depends on where they begin, so they are
    /// added one by one; but each has a byte at least, so that the sum times their number leaves
    /// the numbers within 46341 of them.
    static void Repeat(Frame& frame) {
        if (frame.parts.empty())
            return;
        for (int i = 1; i < frame.count && frame.size <= kLimit / frame.count; ++i) {
            for (const Part& part : frame.parts)
                frame.size = Added(frame.size, part);
            frame.size = RoundedUp(frame.size, *frame.type);
        }
    }

    std::vector<Frame> path_;
    std::unordered_map<const Template*, int> open_;
    std::map<Key, std::int64_t> known_;
    std::int64_t result_ = 0;
    int steps_ = 0;
    bool descended_ = false;
};

} // namespace

int MeasureTemplateValue(const Template& type, Instance* const* elements, int count) {
    return static_cast<int>(Measure().Run(type, elements, count));
}

} // namespace Kor
