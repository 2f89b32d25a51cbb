#pragma once

#include "core/PointerList.h"
#include "core/TiedList.h"
#include "schema/Group.h"

namespace Kor {

class Template;
class TemplateViews;

/// The root of one view; belongs to a template.
class View : public Group, public Tied {
public:
    static constexpr int kClassId = kViewClass;
    KOR_OBJECT_MEMORY

    View(std::string_view name, Template* owner) : Group(name) { SetTemplate(owner); }

    ~View() override { View::Leave(); }

    int GetClass() const override { return kClassId; }

    bool ImplementsClass(int id) const override {
        return id == kClassId || Group::ImplementsClass(id);
    }

    /// The copy refers to the same template.
    std::unique_ptr<Object> Clone() const override;

    /// The templates that list the view follow its new name.
    bool SetName(const char* name) override;

    /// Takes itself out of the templates that list it.
    void Leave() noexcept override;

    /// The template that the view belongs to, whether it lists the view or not; null once that
    /// template is gone.
    Template* GetTemplate() const { return owner_; }
    void SetTemplate(Template* owner);

    /// Kept by the templates that list the view.
    bool IsListed() const { return !listers_.empty(); }
    void MakeRoomForLister() { MakeRoom(listers_); }
    void AddLister(TemplateViews* lister);
    void RemoveLister(TemplateViews* lister);

private:
    friend class Group; // copies views among the items of a group
    View(const View& source) : Group(source) { SetTemplate(source.owner_); }

    Template* owner_ = nullptr;
    PointerList<TemplateViews> listers_;
};

} // namespace Kor
