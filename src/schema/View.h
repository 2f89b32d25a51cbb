#pragma once

#include "schema/Group.h"

namespace Kor {

class Template;

/// The root of one view; belongs to a template.
class View : public Group {
public:
    static constexpr int kClassId = kViewClass;

    View(std::string_view name, Template* owner) : Group(name), owner_(owner) {}

    int GetClass() const override { return kClassId; }
    bool ImplementsClass(int id) const override {
        return id == kClassId || Group::ImplementsClass(id);
    }

    /// The copy refers to the same template.
    std::unique_ptr<Object> Clone() const override;

    /// The template whose list follows the name.
    bool SetName(const char* name) override;

    /// The template that lists the view, or null.
    Template* GetTemplate() const { return owner_; }
    void SetTemplate(Template* owner) { owner_ = owner; }

private:
    friend class Group; // copies views among the items of a group
    View(const View&) = default;

    Template* owner_;
};

} // namespace Kor
