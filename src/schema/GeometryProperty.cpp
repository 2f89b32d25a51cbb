#include "schema/GeometryProperty.h"

#include <algorithm>
#include <limits>
#include <memory>
#include <utility>

// A property makes its own value side; the instances' headers know the schema, not the reverse.
#include "instances/GeometryInstance.h"

#include "core/Undo.h"

namespace Kor {

GeometryProperty::GeometryProperty(const GeometryProperty& source) : Property(source) {
    Undo copied([this] { DropUnseenAlternates(); });
    alternates_.Reserve(source.alternates_.GetCount());
    for (const GeometryAlternate* alternate : source.alternates_)
        AppendCopy(*alternate);
    copied.Commit();
}

void GeometryProperty::Leave() noexcept {
    for (GeometryAlternate* alternate : alternates_)
        alternate->RemoveLister(this);
    alternates_.Clear();
    Property::Leave();
}

void GeometryProperty::BecomePrototype(Template* source) {
    Property::BecomePrototype(source);
    for (GeometryAlternate* alternate : alternates_)
        alternate->BecomePrototype(nullptr);
}

void GeometryProperty::BecomeCopy() {
    Property::BecomeCopy();
    for (GeometryAlternate* alternate : alternates_)
        alternate->BecomeCopy();
}

void GeometryProperty::DropUnseenParts() {
    DropUnseenAlternates();
    Property::DropUnseenParts();
}

void GeometryProperty::DropUnseenAlternates() {
    for (GeometryAlternate* alternate :
         SortedObjectList<GeometryAlternate>(std::move(alternates_))) {
        alternate->DropUnseenParts();
        delete alternate;
    }
}

bool GeometryProperty::SharesLeftType() const {
    return std::any_of(
        alternates_.begin(), alternates_.end(),
        [](const GeometryAlternate* alternate) { return alternate->SharesLeftType(); });
}

std::unique_ptr<Object> GeometryProperty::Clone() const {
    return std::unique_ptr<Object>(new GeometryProperty(*this));
}

void GeometryProperty::AppendCopy(const GeometryAlternate& source) {
    std::unique_ptr<GeometryAlternate> copy(
        static_cast<GeometryAlternate*>(source.Clone().release()));
    copy->JoinSchemaOf(const_cast<GeometryAlternate&>(source));
    copy->AddLister(this);
    alternates_.Append(copy.release());
}

int GeometryProperty::AddAlternate(GeometryAlternate* alternate) {
    alternates_.MakeRoom();
    alternate->MakeRoomForLister();
    GeometryAlternate* replaced = nullptr;
    const int result = alternates_.Insert(alternate, &replaced);
    alternate->AddLister(this); // first: it may have replaced itself
    if (replaced)
        replaced->RemoveLister(this);
    return result;
}

int GeometryProperty::RemoveAlternate(GeometryAlternate* alternate) {
    const int index = alternates_.FindEntry(alternate);
    if (index < 0)
        return index;
    GeometryAlternate* removed = alternates_.GetAt(index);
    alternates_.RemoveExactly(removed);
    removed->RemoveLister(this);
    return index;
}

int GeometryProperty::GetValueSize() const {
    int sum = 0;
    for (const GeometryAlternate* alternate : alternates_) {
        const int size = alternate->GetValueSize();
        if (size < 1)
            return 0;
        sum += std::min(size, std::numeric_limits<int>::max() - sum);
    }
    return sum;
}

std::unique_ptr<PropertyInstance> GeometryProperty::CreateInstance(Instance& instance) {
    return std::make_unique<GeometryInstance>(instance, *this);
}

} // namespace Kor
