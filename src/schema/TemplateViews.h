#pragma once

#include <string_view>

#include "core/ObjectRegistry.h"
#include "core/TiedList.h"
#include "schema/View.h"

namespace Kor {

/// The views that a template lists, by name, and those that name it as theirs, listed or not.
class TemplateViews {
public:
    explicit TemplateViews(Template& owner) : owner_(owner) {}
    TemplateViews(const TemplateViews&) = delete;
    TemplateViews& operator=(const TemplateViews&) = delete;

    /// Adds a new view of that name; -1 for an invalid name.
    int Create(std::string_view name);

    /// The index, or the complement of the index of the view of that name that was overwritten
    /// (and is neither deleted nor unlinked).
    int Add(View* view);
    int Remove(View* view);
    int GetCount() const { return listed_.GetCount(); }
    View* GetAt(int index) const { return listed_.GetAt(index); }
    View* Get(std::string_view name) const { return listed_.Get(name); }

    /// Takes all out of the list and ends those that are the template's or nobody else's.
    void Drop() noexcept;

    /// Those that still name the template as theirs have none from now on.
    void LetGo() noexcept;

    // -- kept for View --------------------------------------------------------------------------

    void MakeRoom() { listed_.MakeRoom(); }
    void Unlist(View& view) { listed_.RemoveExactly(&view); }
    void List(View& view) { listed_.Place(&view); }
    void MakeRoomToTie() { tied_.MakeRoom(); }
    void Tie(View& view) { tied_.Add(&view); }
    void Untie(View& view) { tied_.Remove(&view); }

private:
    Template& owner_;
    ObjectRegistry<View> listed_;
    TiedList<View> tied_;
};

} // namespace Kor
