#pragma once

#include "schema/ViewItem.h"

namespace Kor {

class Template;

/// The root of one view; belongs to a template.
class View : public ViewItem {
public:
    static constexpr int kClassId = kViewClass;

    View(std::string_view name, Template* owner) : ViewItem(name), owner_(owner) {}

    int GetClass() const override { return kClassId; }

    /// A view is a group of view items.
    bool ImplementsClass(int id) const override {
        return id == kClassId || id == kGroupClass || ViewItem::ImplementsClass(id);
    }

    /// The copy refers to the same template.
    std::unique_ptr<Object> Clone() const override {
        return std::unique_ptr<Object>(new View(*this));
    }

    /// The template whose list follows the name.
    bool SetName(const char* name) override;

    /// The template that lists the view, or null.
    Template* GetTemplate() const { return owner_; }
    void SetTemplate(Template* owner) { owner_ = owner; }

private:
    View(const View&) = default;

    Template* owner_;
};

} // namespace Kor
