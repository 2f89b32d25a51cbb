#include "schema/TemplateSize.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <map>
#include <unordered_map>
#include <utility>
#include <vector>

// With a value at hand its instances decide which properties count.
#include "instances/Instance.h"
#include "instances/PropertyInstance.h"

#include "schema/GeometryProperty.h"
#include "schema/Template.h"

namespace Kor {

namespace {

constexpr std::int64_t kLimit = std::numeric_limits<int>::max();

/// One template on the way down, with the place reached in it.
struct Frame {
    const Template* type;
    Instance* const* elements;
    int count;
    int element = 0;
    int nextParent = 0;
    size_t nextProperty = 0;
    const GeometryProperty* geometry = nullptr; ///< The open one, measured by its alternates.
    int nextAlternate = 0;
    std::int64_t alternates = 0; ///< Their sizes so far.
    std::int64_t size = 0;
    bool cut = false; ///< Whether a template above it was met again below it.
};

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
    /// A single element's size of one template is the same everywhere and kept.
    using Key = std::pair<const Template*, const void*>;

    /// Only so many steps are exact in circles of references; beyond, sizes met once are kept.
    static constexpr int kPatience = 100000;

    static Key KeyOf(const Frame& frame) {
        if (!frame.elements)
            return {frame.type, nullptr};
        const Instance* element = *frame.elements;
        return {frame.type, element ? static_cast<const void*>(element) : frame.elements};
    }

    void Enter(const Template* type, Instance* const* elements, int count) {
        Frame frame{type, elements, count};
        result_ = 0;
        if (count <= 0)
            return;
        if (count == 1) {
            const auto known = known_.find(KeyOf(frame));
            if (known != known_.end()) {
                result_ = known->second;
                return;
            }
        }
        if (IsOpen(*type)) {
            for (auto open = path_.rbegin(); open->type != type; ++open)
                open->cut = true;
            return;
        }
        ++open_[type];
        ++steps_;
        path_.push_back(frame);
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
        else if (frame.nextProperty < frame.type->GetDeclaredProperties().size())
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
            frame.geometry ? frame.geometry->GetAlternateAt(frame.nextAlternate) : FindSized(frame);
        if (const auto* geometry = ObjectCast<GeometryProperty>(property)) {
            property = geometry->GetAlternateAt(0);
            frame.geometry = property ? geometry : nullptr;
        }
        if (!property) {
            ++frame.nextProperty;
            return;
        }
        const auto* attribute = ObjectCast<AttributeProperty>(property);
        const Type* type = attribute ? attribute->GetType() : nullptr;
        const auto* contained = type ? ObjectCast<Template>(type->GetStorageType()) : nullptr;
        if (contained)
            Enter(contained, nullptr, type->GetDimension());
        else
            result_ = property->GetValueSize();
        if (!descended_)
            Take(at);
    }

    /// The property that sizes the next value: the declared one, or with an element the one that
    /// the element's property instance stands for; null when there is none.
    static const Property* FindSized(const Frame& frame) {
        Property* declared = frame.type->GetDeclaredProperties()[frame.nextProperty];
        if (!frame.elements)
            return declared;
        Instance* instance = frame.elements[frame.element];
        const PropertyInstance* found =
            instance ? instance->GetPropertyInstance(declared->GetFullName(), true) : nullptr;
        return found ? found->GetProperty() : nullptr;
    }

    /// Adds the size that a parent or a property turned out to have.
    void Take(size_t at) {
        Frame& frame = path_[at];
        if (frame.nextParent < frame.type->GetParentCount()) {
            ++frame.nextParent;
            frame.size = std::min(frame.size + result_, kLimit);
            return;
        }
        if (frame.geometry && !TakeAlternate(frame))
            return;
        const Property* property = frame.type->GetDeclaredProperties()[frame.nextProperty++];
        if (result_ <= 0)
            return;
        const int padding = property->GetPadding(static_cast<int>(frame.size));
        frame.size = std::min(frame.size + padding + result_, kLimit);
    }

    /// Whether the size of the whole geometry is known then: the sum, or 0 once an alternate has
    /// no size.
    bool TakeAlternate(Frame& frame) {
        frame.alternates = result_ < 1 ? 0 : std::min(frame.alternates + result_, kLimit);
        if (result_ > 0 && ++frame.nextAlternate < frame.geometry->GetAlternateCount())
            return false;
        result_ = frame.alternates;
        frame.geometry = nullptr;
        frame.nextAlternate = 0;
        frame.alternates = 0;
        return true;
    }

    void FinishElement() {
        Frame& frame = path_.back();
        const int alignment = std::max(frame.type->GetAlignment(), 1);
        const std::int64_t over = frame.size % alignment;
        frame.size = std::min(over == 0 ? frame.size : frame.size + alignment - over, kLimit);
        frame.nextParent = 0;
        frame.nextProperty = 0;
        if (++frame.element < frame.count)
            return;
        const Frame done = frame;
        path_.pop_back();
        --open_[done.type];
        result_ = std::min(done.size * done.count, kLimit);
        if (done.count == 1 && (!done.cut || steps_ > kPatience))
            known_[KeyOf(done)] = result_;
        if (!path_.empty())
            Take(path_.size() - 1);
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
