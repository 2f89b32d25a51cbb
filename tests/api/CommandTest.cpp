#include "api/SceneHost.h"

namespace {

class CommandTest : public SceneTest {
protected:
    /// Everything that can happen to an attribute and that a command could be waiting for.
    static void TouchEverything(OviAttributeInstance* attribute) {
        const int32_t one = 1;
        OviAttributeInstance_SetValue(attribute, &one);
        OviAttributeInstance_SetBinding(attribute, "node");
        OviPropertyInstance_SetValueLocked(attribute, true);
        OviPropertyInstance_SetBindingLocked(attribute, true);
    }

    /// Properties only list their commands: the host deletes its own.
    static void DeleteCommands(OviProperty* property) {
        while (OviCommand* command = OviProperty_GetCommandAt(property, 0)) {
            OviProperty_RemoveCommand(property, command);
            OviObject_Delete(command);
        }
    }
};

} // namespace

TEST_F(CommandTest, ReadFromAFileNeverFires) {
    Schema("<template name='T'><attribute name='x' type='INT32'>"
           "<command execute='onValue' notification='AttributeValueChanged'/>"
           "<command execute='onBinding' notification='BindingChanged'/>"
           "<command execute='onLock' notification='ValueLockedChanged'/>"
           "<command execute='inMaya' notification='Maya'/>"
           "<command execute='in3dsMax' notification='3dsMax'/>"
           "<command execute='unknown' notification='NoSuchEvent'/>"
           "</attribute></template>");
    ASSERT_TRUE(Errors().empty());
    OviAttributeInstance* attribute = AttributeOf(AssetOf("T"), "T.x");
    ASSERT_EQ(OviProperty_GetCommandCount(OviPropertyInstance_GetProperty(attribute)), 6);
    StartRecording();
    for (int host : {0, 1, 2, 3, -1, 0x4000}) {
        OviNotificationManager_SetDCC(host);
        TouchEverything(attribute);
        EXPECT_EQ(TakeEvents(),
                  (Lines{"0x4000 T.x 1", "0x3000 T.x node", "0x2001 T.x true", "0x2000 T.x true"}))
            << host;
    }
    DeleteCommands(OviPropertyInstance_GetProperty(attribute));
}

TEST_F(CommandTest, WithoutANotificationIsReportedUnderAnotherName) {
    Schema("<template name='T'><attribute name='x' type='INT32'>"
           "<command execute='run'/></attribute></template>");
    EXPECT_EQ(Errors(), Lines{"1 2 <command> requires a 'when' attribute"});
}
