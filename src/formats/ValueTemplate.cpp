#include "formats/ValueTemplate.h"

#include "instances/Instance.h"
#include "schema/Template.h"
#include "types/Type.h"

namespace Kor {

const Template* GetValueTemplate(const Type& type, const void* value) {
    const Type* storage = type.GetStorageType();
    if (!value || !ObjectCast<Template>(storage))
        return nullptr;
    const Instance* first = *static_cast<Instance* const*>(value);
    if (!first || !first->GetNameView().empty() || first->GetTemplateCount() != 1)
        return nullptr;
    const Template* implemented = first->GetTemplateAt(0);
    return implemented == storage ? nullptr : implemented;
}

} // namespace Kor
