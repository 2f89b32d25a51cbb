// Copies of instances inside values. The nested instances are copied from a list of pending pairs,
// so that the depth of nesting does not matter.

#include <algorithm>
#include <utility>
#include <vector>

#include "instances/AttributeInstance.h"
#include "instances/GeometryInstance.h"
#include "instances/Instance.h"
#include "schema/Property.h"

namespace Kor {

namespace {

using Pending = std::vector<std::pair<Instance*, Instance*>>;

/// Gives an attribute copies of another one's nested instances and enters them as pending. A value
/// that was never read stays unset: making it would not end where a template refers to itself.
void CopyNested(const AttributeInstance& source, AttributeInstance& copy, Pending& pending) {
    if (!source.GetStoredValue())
        return;
    copy.MakeEmptyNestedValue();
    for (int i = 0; i < source.GetDimension(); ++i) {
        Instance* nested = source.GetNestedInstance(i);
        if (!nested)
            continue;
        auto made = std::make_unique<Instance>(nested->GetNameView(), Instance::kInsideValue);
        pending.emplace_back(nested, made.get());
        made->AttachSilently(&copy);
        copy.StoreNestedInstance(std::move(made), i);
    }
}

/// Gives an attribute a copy of another one's value.
void CopyValue(AttributeInstance& source, AttributeInstance& copy, Pending& pending) {
    if (source.HoldsInstances())
        CopyNested(source, copy, pending);
    else
        copy.CopyPlainValue(source);
}

void CopyNodeValues(const GeometryInstance& source, GeometryInstance& copy, Pending& pending) {
    for (int i = 0; i < std::min(source.GetNodeInstanceCount(), copy.GetNodeInstanceCount()); ++i) {
        NodeInstance* original = source.GetNodeInstanceAt(i);
        NodeInstance* made = copy.GetNodeInstanceAt(i);
        if (original && made && original->GetProperty() == made->GetProperty())
            CopyValue(*original, *made, pending);
    }
}

} // namespace

void Instance::CopyShallow(const Instance& source) {
    StoreName(source.GetNameView());
    CopyTexts(source);
    templates_ = source.templates_;
    for (Template* implemented : templates_)
        implemented->AddInstance();
}

std::unique_ptr<Instance> Instance::CopyForValue() {
    auto root = std::make_unique<Instance>(GetNameView(), kInsideValue);
    Pending pending{{this, root.get()}};
    while (!pending.empty()) {
        const auto [source, copy] = pending.back();
        pending.pop_back();
        copy->CopyShallow(*source);
        copy->propertyInstances_.Reserve(source->Sorted().GetCount());
        for (PropertyInstance* original : source->Sorted()) {
            PropertyInstance* made = original->GetProperty()->CreateInstance(*copy).release();
            copy->propertyInstances_.Append(made);
            made->CopyFrom(*original);
            if (auto* attribute = ObjectCast<AttributeInstance>(original))
                CopyValue(*attribute, static_cast<AttributeInstance&>(*made), pending);
            else if (const auto* geometry = ObjectCast<GeometryInstance>(original))
                CopyNodeValues(*geometry, static_cast<GeometryInstance&>(*made), pending);
        }
    }
    return root;
}

} // namespace Kor
