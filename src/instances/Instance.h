#pragma once

#include <memory>
#include <unordered_set>

#include "core/NamedObject.h"
#include "core/SortedObjectList.h"
#include "instances/PropertyInstance.h"
#include "schema/SchemaRevision.h"
#include "schema/Template.h"

namespace Kor {

class Asset;

/// An object built from templates, each in one exact version, with one property instance for every
/// property that these define, inherited ones included. Deleting an instance sends no events.
class Instance : public NamedObject {
public:
    static constexpr int kClassId = kInstanceClass;
    KOR_OBJECT_MEMORY

    enum Place {
        kFreeStanding, ///< An asset, or an instance that the host holds.
        kInsideValue,  ///< An element of a template-typed value.
    };

    explicit Instance(std::string_view name, Place place = kFreeStanding);
    ~Instance() override;

    int GetClass() const override { return kClassId; }
    bool ImplementsClass(int id) const override {
        return id == kClassId || NamedObject::ImplementsClass(id);
    }

    /// Announces the name before the name rule is applied, also one that is then refused.
    bool SetName(const char* name) override;

    // -- templates ------------------------------------------------------------------------------

    /// The position, or the complement of the position of the entry that was overwritten. The
    /// event goes out before the property instances exist; they come without events.
    int AddTemplate(Template* added, bool notify);

    /// The position the template had, or the complement of its insertion point. Property instances
    /// of its own properties go; those of inherited ones stay, since other templates of the
    /// instance may have the same parents.
    int RemoveTemplate(Template* removed, bool notify);

    /// Moves to the next version and gives its position; -1, changing nothing, when there is none
    /// or the template is not implemented. Values are never deleted.
    int UpdateTemplate(Template* old, bool notify);

    /// The highest implemented version of that full name that is not newer than the latest known.
    Template* GetTemplate(std::string_view name) const;
    Template* GetTemplateAt(int index) const { return Templates().GetAt(index); }
    int GetTemplateCount() const { return templates_.GetCount(); }

    /// Exactly that version, when it is implemented.
    Template* FindTemplateVersion(std::string_view name, int version) const;

    // -- property instances ---------------------------------------------------------------------

    /// The property instance of that full name; with `create`, one is made when the template
    /// manager knows the property. It then belongs to no implemented template.
    PropertyInstance* GetPropertyInstance(std::string_view fullName, bool create);

    /// The same without `create`, first looked for at `next`, which becomes the index behind it:
    /// files list property instances in their order.
    PropertyInstance* FindPropertyInstance(std::string_view fullName, int& next) const;

    /// The property instance of that property's full name, made when missing; null when the kind
    /// makes none. Only one that was made is announced.
    PropertyInstance* AddPropertyInstance(Property& property, bool notify);

    /// Deletes the property instance of that property's full name, unless a callback kept it; gives
    /// its index, or -1 without one.
    int RemovePropertyInstance(Property& property, bool notify);

    /// Whether there is a property instance of that full name and it is valid.
    bool IsPropertyInstanceValid(std::string_view fullName) const;
    const SortedObjectList<PropertyInstance>& GetPropertyInstances() const { return Sorted(); }

    /// Whether the own properties of all implemented templates are valid. Inherited ones are not
    /// looked at; IsPropertyInstanceValid tells of each.
    virtual bool IsValid() const;

    /// Tells the host's callbacks, if there are any, of an event.
    void Notify(int event, void* argument);

    // -- packed form ----------------------------------------------------------------------------

    /// The sum of the templates' value sizes, which follow rules of their own: WriteToBinary mostly
    /// uses another number of bytes. May make property instances.
    unsigned GetSize();

    /// Packs the values of the properties of all implemented templates; gives the bytes used.
    unsigned WriteToBinary(void* buffer, unsigned bufferSize) const;

    // -- place in other instances ---------------------------------------------------------------

    /// The attribute whose value the instance is, where it was made its parent; else null.
    PropertyInstance* GetParentPropertyInstance() const { return hasParent_ ? holder_ : nullptr; }

    /// Setting a parent announces a renaming to the parent's (always empty) name, which is then
    /// refused: kept so because hosts listen for it.
    void SetParentPropertyInstance(PropertyInstance* parent);

    /// The asset at the top of the chain of parents, or null.
    Asset* GetParentAsset();

    /// Sets the parent, or none, without announcing anything.
    void AttachSilently(PropertyInstance* parent);

    /// The attribute whose value the instance is an element of. It is known for every element,
    /// though only the first of those made on demand have it as their parent.
    PropertyInstance* GetHolder() const { return holder_; }
    void SetHolder(PropertyInstance* holder) {
        holder_ = holder;
        lostValue_ = lostValue_ && !holder;
    }

    /// A copy with everything but the parent, its nested instances copied too; silent.
    std::unique_ptr<Instance> CopyForValue();

    // -- lives ----------------------------------------------------------------------------------

    /// Whether it is or was an element of a value.
    bool IsValueElement() const { return !freeStanding_; }

    /// Makes a free-standing instance an element of a value.
    void BecomeValueElement();

    /// Takes itself out of the value that it is an element of, and lets go of all templates.
    void Leave() noexcept override;

    /// Called when the value that held the instance is gone. It goes, too, unless the host may have
    /// its handle: then it stays, abandoned.
    void LoseValue();

    /// The host gets the handle.
    void HandOut() { handedOut_ = true; }

    /// Takes away what the instance has of a template (or null) that ended and of such properties.
    void DropEnded(const Template* ended, const std::unordered_set<const Property*>& properties);

    /// Whether it has anything of them.
    bool HasAnyOf(const Template* ended,
                  const std::unordered_set<const Property*>& properties) const;

    /// Whether a template that it implements, or that lists a property it has, is leaving: emptied
    /// by unloading, of a schema that ended, or only there for its users. So does a property leave
    /// that no template lists.
    bool UsesLeavingTemplates() const;

    /// Of an abandoned instance: takes templates and property instances away, so that the schema
    /// can go. Appends the templates that they used.
    void LetGoOfSchema(std::vector<Template*>& released);

    /// Free-standing instances alive: while there are any, a terminated schema is kept for them.
    static int CountFreeStanding() { return freeStandingCount_; }

    /// Called by a property instance that is deleted by hand or gets another owner.
    void ForgetPropertyInstance(PropertyInstance& propertyInstance);

    /// Where scene readers have the instance open, as OpenInstances counts; 0 when none has.
    size_t GetOpenPlace() const { return openPlace_; }
    void SetLivingPlace(unsigned place) { livingPlace_ = place; }
    void SetAbandonedPlace(unsigned place) { abandonedPlace_ = place; }
    void SetOpenPlace(size_t place) { openPlace_ = static_cast<unsigned>(place); }

protected:
    /// Called around a change of the name, so that lists sorted by it stay sorted.
    virtual void MakeRoomInSortedLists() {}
    virtual void LeaveSortedLists() {}
    virtual void EnterSortedLists() {}

private:
    /// The lists in the order of the present keys.
    SortedObjectList<PropertyInstance>& Sorted() const {
        if (sortedBy_ != SchemaRevision::GetKeys())
            SortAnew();
        return propertyInstances_;
    }
    SortedObjectList<Template>& Templates() const {
        if (sortedBy_ != SchemaRevision::GetKeys())
            SortAnew();
        return templates_;
    }
    int ListTemplate(Template* added, Template*& replaced);
    void UnlistTemplate(Template* added, Template* replaced);
    void SortAnew() const;
    PropertyInstance* FindByName(std::string_view fullName) const;
    PropertyInstance* FindOrAnnounced(const Property& property) const;
    void AddPropertyInstances(const std::vector<Property*>& properties);
    void AddMissingPropertyInstances(const std::vector<Property*>& properties);
    std::vector<Property*> CollectListedProperties() const;
    void DeletePropertyInstances();
    void ReleaseTemplates();
    void LetGo() noexcept;
    void Abandon();
    void StayInReach();
    void LeaveAbandoned();
    void RemoveListed(PropertyInstance& listed, bool notify);
    void AnnounceDroppedProperties(const Template& old, const Template& next);
    void UpdateProperty(Property& property, bool notify);
    void CopyShallow(const Instance& source);

    mutable SortedObjectList<Template> templates_;
    mutable SortedObjectList<PropertyInstance> propertyInstances_;
    mutable std::uint64_t sortedBy_ = 0; // the state of the full names that the order is for
    PropertyInstance* holder_ = nullptr;
    unsigned openPlace_ = 0;
    unsigned abandonedPlace_ = 0; // one past the place among the abandoned ones
    unsigned livingPlace_;
    bool hasParent_ : 1;
    bool freeStanding_ : 1;
    bool handedOut_ : 1;
    bool lostValue_ : 1; // and was not given another one

    static inline int freeStandingCount_ = 0;
    static inline size_t count_ = 0; // alive; any of them may be abandoned
};

} // namespace Kor
