/* A small host application: what a program that uses OviCore does, from start to end.
 *
 * usage: ovi_host EXAMPLES_DIRECTORY OUTPUT_DIRECTORY
 *
 * It loads the sample schema, builds a scene of two assets, saves it, loads it again and compares
 * every value; then it loads a sample scene, saves it twice and compares the two files. Every event
 * that the library sends is printed. The exit code is 0 only when everything was as expected.
 *
 * In C all handles are pointers to void, so none of them needs a cast. A null handle never crashes:
 * the functions give null, 0 or false for it, and the comparisons below then show the difference.
 */
#include <ovi/ovi.h>

#include <stdio.h>
#include <string.h>

/* What was compared and what went wrong, over the whole run. */
static int comparedCount = 0;
static int differenceCount = 0;
static int failureCount = 0;

static void Require(bool asExpected, const char* what) {
    if (!asExpected) {
        ++failureCount;
        fprintf(stderr, "FAILED: %s\n", what);
    }
}

static void Compare(bool equal, const char* owner, const char* what) {
    ++comparedCount;
    if (!equal) {
        ++differenceCount;
        fprintf(stderr, "DIFFERENT: %s of %s\n", what, owner);
    }
}

/* ---- Events ------------------------------------------------------------------------------------
 * The library calls a host's function inside the call that causes the event. What the argument is
 * depends on the event; see ovi/types.h. */

typedef enum { ARGUMENT_NONE, ARGUMENT_OBJECT, ARGUMENT_TEXT, ARGUMENT_INT, ARGUMENT_BOOL } Kind;

static const struct {
    int event;
    const char* name;
    Kind argument;
} eventInfos[] = {
    {OVI_EVENT_TEMPLATE_ADDED, "template added", ARGUMENT_OBJECT},
    {OVI_EVENT_TEMPLATE_REMOVED, "template removed", ARGUMENT_OBJECT},
    {OVI_EVENT_TEMPLATE_UPDATED, "template updated", ARGUMENT_OBJECT},
    {OVI_EVENT_TEMPLATE_DEPRECATED, "template deprecated", ARGUMENT_NONE},
    {OVI_EVENT_ASSET_ADDED, "asset added", ARGUMENT_INT},
    {OVI_EVENT_ASSET_REMOVED, "asset removed", ARGUMENT_INT},
    {OVI_EVENT_INSTANCE_RENAMED, "instance renamed", ARGUMENT_TEXT},
    {OVI_EVENT_REFERENCE_FILE, "file referenced", ARGUMENT_TEXT},
    {OVI_EVENT_UNREFERENCE_FILE, "file no longer referenced", ARGUMENT_TEXT},
    {OVI_EVENT_REFERENCE_CHANGED, "reference changed", ARGUMENT_TEXT},
    {OVI_EVENT_BINDING_LOCKED_CHANGED, "binding lock changed", ARGUMENT_BOOL},
    {OVI_EVENT_VALUE_LOCKED_CHANGED, "value lock changed", ARGUMENT_BOOL},
    {OVI_EVENT_PROPERTY_UPDATED, "property updated", ARGUMENT_OBJECT},
    {OVI_EVENT_PROPERTY_RENAMED, "property renamed", ARGUMENT_OBJECT},
    {OVI_EVENT_PROPERTY_DEPRECATED, "property deprecated", ARGUMENT_NONE},
    {OVI_EVENT_PROPERTY_ADDED, "property added", ARGUMENT_OBJECT},
    {OVI_EVENT_PROPERTY_REMOVED, "property removed", ARGUMENT_OBJECT},
    {OVI_EVENT_EXECUTE_COMMAND, "execute command", ARGUMENT_TEXT},
    {OVI_EVENT_BINDING_CHANGED, "binding changed", ARGUMENT_TEXT},
    {OVI_EVENT_ATTRIBUTE_VALUE_CHANGED, "value changed", ARGUMENT_TEXT},
};

enum { EVENT_INFO_COUNT = sizeof eventInfos / sizeof eventInfos[0] };

/* The user data of the callbacks: how often each event came. */
typedef struct {
    int counts[EVENT_INFO_COUNT];
    int unknown;
} EventLog;

/* Property instances are known by the full names of their properties, such as "Boat.rigging". */
static const char* NameOf(OviObject* object) {
    if (OviObject_ImplementsClass(object, OVI_CLASS_PROPERTY_INSTANCE))
        return OviProperty_GetFullName(OviPropertyInstance_GetProperty(object));
    return OviNamedObject_GetName(object);
}

static void PrintArgument(Kind kind, void* argument) {
    switch (kind) {
    case ARGUMENT_OBJECT:
        printf("%s", NameOf(argument));
        break;
    case ARGUMENT_TEXT: {
        const char* text = argument;
        printf("\"%s\"", text ? text : "");
        break;
    }
    case ARGUMENT_INT: {
        const int* number = argument;
        printf("%d", *number);
        break;
    }
    case ARGUMENT_BOOL: {
        const bool* flag = argument; /* a callback may change it and so refuse the lock */
        printf("%s", *flag ? "true" : "false");
        break;
    }
    case ARGUMENT_NONE:
        break;
    }
}

static void OnEvent(void* userData, void* object, int event, void* argument) {
    EventLog* log = userData;
    for (int i = 0; i < EVENT_INFO_COUNT; ++i) {
        if (eventInfos[i].event == event) {
            ++log->counts[i];
            printf("  %-26s %-24s ", eventInfos[i].name, NameOf(object));
            PrintArgument(eventInfos[i].argument, argument);
            printf("\n");
            return;
        }
    }
    ++log->unknown;
}

static int CountEvents(const EventLog* log, int event) {
    for (int i = 0; i < EVENT_INFO_COUNT; ++i) {
        if (eventInfos[i].event == event)
            return log->counts[i];
    }
    return 0;
}

/* Events about instances and about property instances are two lists. Mind the sense of the result:
 * true means that this user data was registered before. */
static void RegisterCallbacks(EventLog* log) {
    Require(!OviNotificationManager_RegisterInstanceCallback(OnEvent, log),
            "registering the callback for instances");
    Require(!OviNotificationManager_RegisterPropertyInstanceCallback(OnEvent, log),
            "registering the callback for property instances");
}

static void UnregisterCallbacks(EventLog* log) {
    Require(OviNotificationManager_UnregisterPropertyInstanceCallback(log),
            "unregistering the callback for property instances");
    Require(OviNotificationManager_UnregisterInstanceCallback(log),
            "unregistering the callback for instances");
}

/* ---- Files ----------------------------------------------------------------------------------- */

enum { PATH_CAPACITY = 4096 };

typedef struct {
    char text[PATH_CAPACITY];
} Path;

static Path JoinPath(const char* directory, const char* file) {
    Path path;
    const int length = snprintf(path.text, sizeof path.text, "%s/%s", directory, file);
    Require(length > 0 && length < PATH_CAPACITY, "a path that is not too long");
    return path;
}

/* Faults in files do not make a load fail. They are collected until the host clears the list. */
static void RequireNoFindings(void) {
    OviErrorItem* item = NULL;
    for (int i = 0; (item = OviErrorManager_GetErrorItemAt(i)) != NULL; ++i) {
        ++failureCount;
        fprintf(stderr, "%s:%d: %s\n", OviErrorItem_GetSourceName(item),
                OviErrorItem_GetLineNumber(item), OviErrorItem_GetMessage(item));
    }
    OviErrorManager_Clear();
}

/* Each library is a search path; below it, a directory is a package. */
static const char* const libraries[] = {"schema/core", "schema/show", "schema/modeling"};

/* A package loads the packages that it uses, from whatever library has them. */
static const char* const packages[] = {"studio.vehicles.water", "studio.cameras"};

static void LoadSchema(const char* examples) {
    for (size_t i = 0; i < sizeof libraries / sizeof libraries[0]; ++i) {
        const Path path = JoinPath(examples, libraries[i]);
        /* Below 0: the path is new. */
        Require(OviTemplateManager_AddSearchPath(path.text, false) < 0, libraries[i]);
    }
    for (size_t i = 0; i < sizeof packages / sizeof packages[0]; ++i)
        Require(OviTemplateManager_LoadPackage(packages[i]), packages[i]);
    RequireNoFindings();
    printf("%d templates\n", OviTemplateManager_GetTemplateCount());
}

/* ---- The values of the scene ------------------------------------------------------------------
 * A value is a block: an array of elements of the type's C form. */

static const float topSpeed[] = {12.5f};
static const float draught[] = {1.25f, 1.5f, 1.875f, 2.25f};
static const double position[] = {-120.5, 0.0, 64.25};
static const int16_t passengers[] = {240};
static const int32_t reviewState[] = {20}; /* the item ForReview */
static const float farClip[] = {25000.0f};
static const float paintColor[] = {0.125f, 0.25f, 0.5f, 1.0f};
static const float focalLength[] = {85.0f};
static const char* const shipName[] = {"The \"Elbe\" & her crew <all of them>"};
static const char* const rigging[] = {"ketch"};                 /* an enumeration over texts */
static const char* const keywords[] = {"ferry", NULL, "white"}; /* an empty text reads as null */
static const char* const texture[] = {"textures/boats/elbe.tx"};
static const unsigned char passes[] = {1, 0, 0, 1}; /* a truth value is one byte */

typedef struct {
    const char* asset;
    const char* holder; /* the property whose nested instance has the property, or null */
    const char* property;
    const void* value;
    int count;
} Value;

static const Value values[] = {
    {"ferry", NULL, "Entity.displayName", shipName, 1},
    {"ferry", NULL, "Vehicle.maxSpeed", topSpeed, 1},
    {"ferry", NULL, "Vehicle.passengers", passengers, 1},
    {"ferry", NULL, "Placeable.translate", position, 3},
    {"ferry", NULL, "Boat.rigging", rigging, 1},
    {"ferry", NULL, "Boat.draught", draught, 4},
    {"ferry", NULL, "Reviewable.state", reviewState, 1},
    {"ferry", NULL, "Documented.keywords", keywords, 3},
    {"ferry", "Vehicle.paint", "Finish.baseColor", paintColor, 4},
    {"ferry", "Vehicle.paint", "Finish.textureFile", texture, 1},
    {"quay_camera", NULL, "Camera.farClip", farClip, 1},
    {"quay_camera", "Camera.lens", "Lens.focalLength", focalLength, 1},
};

enum { VALUE_COUNT = sizeof values / sizeof values[0] };

static const char bindingOfPosition[] = "|harbour|ferry.translate";
static const char libraryFile[] = "library/boats/ferry.asset";

/* The attribute instance of a property's full name; null when the instance has none. */
static OviAttributeInstance* FindAttribute(OviInstance* instance, const char* property) {
    return OviInstance_GetPropertyInstance(instance, property, false);
}

static OviType* TypeOf(OviAttributeInstance* attribute) {
    return OviAttributeProperty_GetType(OviPropertyInstance_GetProperty(attribute));
}

/* An asset, or the instance nested in one of its attributes: a value of a template type is an array
 * of instance handles. */
static OviInstance* FindHolder(const Value* value) {
    OviAsset* asset = OviAssetManager_GetAsset(value->asset);
    if (!value->holder)
        return asset;
    OviInstance** nested = OviAttributeInstance_GetValue(FindAttribute(asset, value->holder));
    return nested ? nested[0] : NULL;
}

/* ---- Building the scene ---------------------------------------------------------------------- */

/* The scene owns its assets. An asset has nothing until it is given a template: then it has a
 * property instance for every property of it, inherited ones included. */
static OviAsset* AddAsset(const char* name, const char* templateName) {
    OviAsset* asset = OviAssetManager_NewAsset(name);
    Require(asset != NULL, "a new asset");
    OviTemplate* latest = OviTemplateManager_GetTemplate(templateName);
    Require(latest != NULL, templateName);
    Require(OviInstance_AddTemplate(asset, latest) >= 0, "adding a template");
    return asset;
}

/* An instance inside an attribute's value. The value is a copy of what is handed in, so the host
 * still owns its instance and deletes it. */
static void Nest(OviAsset* asset, const char* property, const char* name,
                 const char* templateName) {
    OviInstance* instance = OviInstance_New(name);
    OviInstance_AddTemplate(instance, OviTemplateManager_GetTemplate(templateName));
    OviAttributeInstance_SetValue(FindAttribute(asset, property), &instance);
    OviObject_Delete(instance);
}

static void SetValue(const Value* value) {
    OviAttributeInstance* attribute = FindAttribute(FindHolder(value), value->property);
    Require(attribute != NULL, value->property);
    /* Only types of variable length take a new number of elements; for others it must be theirs. */
    Require(OviAttributeInstance_SetDimension(attribute, value->count), value->property);
    OviAttributeInstance_SetValue(attribute, value->value);
}

/* From an array of integers or truth values, SetValue repeats the first element. Their elements
 * are written in place, which sends no event. */
static void SetPasses(OviAsset* asset) {
    unsigned char* block = OviAttributeInstance_GetValue(FindAttribute(asset, "Renderable.passes"));
    Require(block != NULL, "the block of Renderable.passes");
    if (block)
        memcpy(block, passes, sizeof passes);
}

/* A value from text, as an editor's input field would set it. What the host makes, it frees. */
static void SetFromText(OviAsset* asset, const char* property, const char* text) {
    OviAttributeInstance* attribute = FindAttribute(asset, property);
    OviType* type = TypeOf(attribute);
    void* block = OviType_NewValue(type, NULL, 1);
    OviType_GetValueFromString(type, text, block, 0);
    Require(OviAttributeProperty_IsValueValid(OviPropertyInstance_GetProperty(attribute), block),
            "a value within the bounds of its property");
    OviAttributeInstance_SetValue(attribute, block);
    OviType_DeleteValue(type, block, 1);
}

/* Bindings, locks and references are kept for the host; the library does not interpret them. */
static void BindLockAndRefer(OviAsset* ferry, OviAsset* camera) {
    OviAttributeInstance* translate = FindAttribute(ferry, "Placeable.translate");
    OviAttributeInstance_SetBinding(translate, bindingOfPosition);
    OviPropertyInstance_SetBindingLocked(translate, true);
    OviPropertyInstance_SetValueLocked(translate, true);
    Require(OviPropertyInstance_IsBindingLocked(translate), "the lock of the binding");
    Require(OviPropertyInstance_IsValueLocked(translate), "the lock of the value");

    /* A reference property holds no instance; what it refers to is bound by name. */
    OviAttributeInstance* follows = FindAttribute(camera, "Camera.follows");
    Require(OviAttributeProperty_IsReference(OviPropertyInstance_GetProperty(follows)),
            "Camera.follows is a reference");
    OviAttributeInstance_SetBinding(follows, "ferry");

    OviAsset_SetReference(ferry, libraryFile);
    Require(strcmp(OviAsset_GetReference(ferry), libraryFile) == 0, "the reference to a file");
}

static void BuildScene(void) {
    OviAsset* ferry = AddAsset("ferry", "studio.vehicles.water.Boat");
    OviAsset* camera = AddAsset("quay_camera", "studio.cameras.Camera");
    Nest(ferry, "Vehicle.paint", "ferry_paint", "studio.props.Finish");
    Nest(camera, "Camera.lens", "long_lens", "studio.cameras.Lens");
    for (int i = 0; i < VALUE_COUNT; ++i)
        SetValue(&values[i]);
    SetPasses(ferry);
    SetFromText(ferry, "Boat.hullLength", "48.5");
    BindLockAndRefer(ferry, camera);
}

/* ---- Comparing the scene --------------------------------------------------------------------- */

static void CompareValue(const Value* value) {
    OviAttributeInstance* attribute = FindAttribute(FindHolder(value), value->property);
    OviType* type = TypeOf(attribute);
    /* An enumeration finds all values equal: what tells them apart is the type below it. */
    if (OviObject_ImplementsClass(type, OVI_CLASS_ENUMERATION))
        type = OviType_GetBaseType(type);
    const void* block = OviAttributeInstance_GetValue(attribute);
    const bool sameCount = OviAttributeInstance_GetDimension(attribute) == value->count;
    Compare(type && block && sameCount &&
                OviType_CompareValues(type, block, value->value, value->count) == 0,
            value->asset, value->property);
}

static void CompareTemplate(const char* asset, const char* templateName, int version) {
    OviTemplate* found = OviInstance_GetTemplate(OviAssetManager_GetAsset(asset), templateName);
    Compare(OviTemplate_GetVersion(found) == version, asset, templateName);
}

static void CompareBinding(const char* asset, const char* property, const char* binding) {
    OviAttributeInstance* attribute = FindAttribute(OviAssetManager_GetAsset(asset), property);
    Compare(strcmp(OviAttributeInstance_GetBinding(attribute), binding) == 0, asset, property);
}

static void CompareScene(void) {
    static const float hullLength[] = {48.5f};
    static const Value others[] = {
        {"ferry", NULL, "Renderable.passes", passes, 4},
        {"ferry", NULL, "Boat.hullLength", hullLength, 1},
    };
    Compare(OviAssetManager_GetAssetCount() == 2, "the scene", "number of assets");
    CompareTemplate("ferry", "studio.vehicles.water.Boat", 2);
    CompareTemplate("quay_camera", "studio.cameras.Camera", 2);
    for (int i = 0; i < VALUE_COUNT; ++i)
        CompareValue(&values[i]);
    CompareValue(&others[0]);
    CompareValue(&others[1]);
    CompareBinding("ferry", "Placeable.translate", bindingOfPosition);
    CompareBinding("quay_camera", "Camera.follows", "ferry");
}

/* ---- What the program does ------------------------------------------------------------------- */

static void LoadFresh(const char* path) {
    OviAssetManager_NewScene(); /* otherwise the file's assets would join those of the scene */
    Require(OviAssetManager_LoadScene(path), path);
    RequireNoFindings();
}

static void Save(const char* path) {
    Require(OviAssetManager_SaveScene(path), path);
    RequireNoFindings();
}

/* Locks and references to files are read from scene files but not written to them: a host that
 * needs them keeps them itself. Everything else comes back. */
static void BuildSaveAndLoad(const char* output) {
    const Path path = JoinPath(output, "host.asset");
    printf("Building a scene\n");
    BuildScene();
    CompareScene();
    Save(path.text);
    printf("Loading it again\n");
    LoadFresh(path.text);
    CompareScene();
}

static bool HaveSameBytes(const char* firstPath, const char* secondPath) {
    FILE* first = fopen(firstPath, "rb");
    FILE* second = fopen(secondPath, "rb");
    bool same = first && second;
    for (int byte = 0; same && byte != EOF;) {
        byte = getc(first);
        same = byte == getc(second) && !ferror(first) && !ferror(second);
    }
    if (first)
        fclose(first);
    if (second)
        fclose(second);
    return same;
}

/* What was saved once and loaded is saved the same again. */
static void ResaveSample(const char* examples, const char* output) {
    const Path sample = JoinPath(examples, "scenes/garage.asset");
    const Path first = JoinPath(output, "garage-first.asset");
    const Path second = JoinPath(output, "garage-second.asset");
    printf("Loading a sample scene\n");
    LoadFresh(sample.text);
    Require(OviAssetManager_GetAssetCount() == 3, "three assets in the garage");
    Save(first.text);
    printf("Loading what was saved\n");
    LoadFresh(first.text);
    Save(second.text);
    Compare(HaveSameBytes(first.text, second.text), second.text, "text");
}

static void RequireEvents(const EventLog* log) {
    Require(log->unknown == 0, "only known events");
    /* Two assets made, two loaded, and three twice from the sample and its copy. */
    Require(CountEvents(log, OVI_EVENT_ASSET_ADDED) == 10, "an event for each asset");
    Require(CountEvents(log, OVI_EVENT_ATTRIBUTE_VALUE_CHANGED) >= 2 * VALUE_COUNT,
            "an event for each value");
    Require(CountEvents(log, OVI_EVENT_REFERENCE_FILE) >= 1, "an event for the reference");
}

int main(int argc, char** argv) {
    EventLog log = {{0}, 0};
    if (argc != 3) {
        fprintf(stderr, "usage: ovi_host EXAMPLES_DIRECTORY OUTPUT_DIRECTORY\n");
        return 2;
    }
    Ovi_Initialize();
    RegisterCallbacks(&log);
    LoadSchema(argv[1]);
    BuildSaveAndLoad(argv[2]);
    ResaveSample(argv[1], argv[2]);
    RequireEvents(&log);
    UnregisterCallbacks(&log);
    Ovi_Terminate(); /* every handle is invalid from here on */

    printf("%d values compared, %d differences\n", comparedCount, differenceCount);
    return failureCount == 0 && differenceCount == 0 ? 0 : 1;
}
