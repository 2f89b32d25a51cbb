#pragma once

#include <vector>

#include "schema/ViewItem.h"

namespace Kor {

class Template;

/// The root of one view; belongs to a template.
class View : public ViewItem {
public:
    static constexpr int kClassId = kViewClass;

    View(std::string_view name, Template* owner) : ViewItem(name) { SetTemplate(owner); }

    /// Takes itself out of the templates that list it.
    ~View() override;

    int GetClass() const override { return kClassId; }

    /// A view is a group of view items.
    bool ImplementsClass(int id) const override {
        return id == kClassId || id == kGroupClass || ViewItem::ImplementsClass(id);
    }

    /// The copy refers to the same template.
    std::unique_ptr<Object> Clone() const override {
        return std::unique_ptr<Object>(new View(*this));
    }

    /// The templates that list the view follow its new name.
    bool SetName(const char* name) override;

    /// The template that the view belongs to, whether it lists the view or not; null once that
    /// template is gone.
    Template* GetTemplate() const { return owner_; }
    void SetTemplate(Template* owner);

    /// Kept by the templates that list the view.
    bool IsListed() const { return !listers_.empty(); }
    void AddLister(Template* lister);
    void RemoveLister(Template* lister);

private:
    View(const View& source) : ViewItem(source) { SetTemplate(source.owner_); }

    Template* owner_ = nullptr;
    std::vector<Template*> listers_;
};

} // namespace Kor
