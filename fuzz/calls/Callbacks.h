#pragma once

class World;

/// What the host does when it is told of events: it looks at what it is told, and calls the library
/// again with what the input chooses.
class Callbacks {
public:
    /// Whose input is used from now on; null for none.
    static void SetWorld(World* world);

    /// Has both called under an address of their own.
    static void Register();

    static void HearInstance(void* userData, void* object, int event, void* argument);
    static void HearPropertyInstance(void* userData, void* object, int event, void* argument);

private:
    static void LookAtArgument(int event, void* argument);
    static void CallBack(void* object);

    static World* world_;
};
