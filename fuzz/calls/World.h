#pragma once

#include <cstdint>
#include <string>
#include <unordered_set>
#include <vector>

#include "calls/Input.h"
#include "calls/Objects.h"
#include "ovi/ovi.h"

/// Everything that calls choose their arguments from: the input, the objects there are, and the
/// objects that belong to the host. It obeys the rules of the headers: only living objects are
/// handed in, and what is deleted is whatever the rules allow, in use or not.
class World {
public:
    explicit World(Input input);

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

    /// Whether an object of this world's is there for hosts: not once it has ended. Its address
    /// stays its own, since the memory of dead objects is kept while the world lasts.
    static bool IsAlive(const void* object);

    /// Switches the checks of handles, without giving back the memory of dead objects.
    static void SetChecks(bool on);

    /// Compares who owned what before and after a call, in which callbacks may do anything.
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

    /// Ends the library and deletes all that is left. A finding when anything is left then.
    void End();

    // -- the host's callbacks --------------------------------------------------------------------

    static constexpr size_t kMaxCallDepth = 3;

    /// How many callbacks are running.
    size_t GetCallDepth() const { return callDepth_; }
    void EnterCallback(void* heard) { heard_[++callDepth_] = static_cast<Kor::Object*>(heard); }
    void LeaveCallback() { --callDepth_; }

    /// What the innermost callback was told of, or null where that has ended.
    Kor::Object* GetHeard() const;

private:
    std::string& NextText();
    const char* NameOfAnObject();
    void DeleteAll();

    Input input_;
    Objects objects_;
    bool isCurrent_ = false;
    std::vector<Kor::Object*> host_;
    std::unordered_set<Kor::Object*> seen_;   // also what has ended since
    std::string texts_[kMaxCallDepth + 1][4]; // of the arguments of one call
    size_t nextText_ = 0;
    size_t callDepth_ = 0;
    Kor::Object* heard_[kMaxCallDepth + 1] = {};
};
