#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "calls/Input.h"
#include "calls/Objects.h"
#include "ovi/ovi.h"

/// Everything that calls choose their arguments from: the input, the objects there are, and the
/// objects that belong to the host. It obeys the rules of the headers: only living objects are
/// handed in, and only what nothing refers to any more is deleted.
class World {
public:
    explicit World(Input input) : input_(input) {}

    Input& GetInput() { return input_; }

    // -- arguments ------------------------------------------------------------------------------

    /// An object of the class; now and then null, or an object of any other class.
    Kor::Object* PickObject(int classId);

    /// Surely of the class, or null.
    Kor::Object* PickExactly(int classId);

    template <class T> T* Pick() { return static_cast<T*>(PickExactly(T::kClassId)); }

    /// A text that stays valid during the call, or null: names of what there is, odd and very long
    /// ones, and bytes of the input.
    const char* PickText();

    int PickInt();

    /// A number that memory is taken for: small ones, and some below 0.
    int PickCount();

    // -- files ----------------------------------------------------------------------------------

    /// Paths of files to read, and of files to write in a directory of this process.
    const char* PickTemplatePath();
    const char* PickOutputPath();

    // -- lives ----------------------------------------------------------------------------------

    /// Called before every call that may make or delete objects.
    void Forget() { isCurrent_ = false; }

    /// The objects there are.
    Objects& GetObjects();

    /// Notes that an object belongs to the host (null is ignored), or no longer does.
    void Own(OviObject* object);
    void Disown(const Kor::Object* object);

    /// Whether the library owns the object.
    static bool IsOwned(const Kor::Object& object);

    /// Compares who owned what before and after a call that hands objects over.
    class Transfer {
    public:
        explicit Transfer(World& world);
        ~Transfer();
        Transfer(const Transfer&) = delete;
        Transfer& operator=(const Transfer&) = delete;

    private:
        World& world_;
        std::vector<Kor::Object*> owned_;
    };

    /// Ends a use of the library. With the last one the handles of what it owns become invalid,
    /// also where something of the host's still keeps the objects alive.
    void Terminate();

    /// Whether the rules allow to delete the object now.
    static bool MayDelete(Kor::Object& object);

    /// Ends the library and deletes all that is left.
    void End();

    // -- the host's callbacks --------------------------------------------------------------------

    static constexpr size_t kMaxCallDepth = 2;

    /// How many callbacks are running.
    size_t GetCallDepth() const { return callDepth_; }
    void EnterCallback() { ++callDepth_; }
    void LeaveCallback() { --callDepth_; }

private:
    static void Delete(Kor::Object* object);
    static void DropValues(Kor::Object* object);
    static void Unlink(Kor::Object* object, const std::vector<Kor::Object*>& left);
    std::string& NextText();
    const char* NameOfAnObject();
    std::vector<Kor::Object*> TakeWhatNobodyOwns();

    Input input_;
    Objects objects_;
    bool isCurrent_ = false;
    std::vector<Kor::Object*> host_;
    std::string texts_[kMaxCallDepth + 1][4]; // of the arguments of one call
    size_t nextText_ = 0;
    size_t callDepth_ = 0;
};
