#include "simulator/runtime/SimulatedClass.hpp"
#include "simulator/springboard/bulletins.hpp"
#include "simulator/springboard/springboard_classes.hpp"

/// A notification as the bulletin board keeps it.

namespace simulator {

namespace {

struct BulletinState : BulletinContents {
    /// The same in every version of one bulletin.
    unsigned long number = 0;
};

Owned<BBBulletin> made(const BulletinContents& contents, unsigned long number)
{
    Owned<BBBulletin> bulletin = adopt(send<"new", BBBulletin*>(classNamed<"BBBulletin">()));
    ivarsOf<BulletinState>(bulletin.get()) = {contents, number};
    return bulletin;
}

template <Owned<NSString> BulletinContents::* Text>
NSString* text(BBBulletin* self, SEL)
{
    return ivarsOf<BulletinState>(self).*Text;
}

} // namespace

Owned<BBBulletin> newBulletin(const BulletinContents& contents)
{
    static unsigned long bulletins = 0;
    return made(contents, ++bulletins);
}

Owned<BBBulletin> modifiedBulletin(BBBulletin* bulletin, NSString* title, NSString* message)
{
    const auto& state = ivarsOf<BulletinState>(bulletin);
    return made({state.sectionID, title, message, state.person}, state.number);
}

bool areTheSame(BBBulletin* one, BBBulletin* other)
{
    return ivarsOf<BulletinState>(one).number == ivarsOf<BulletinState>(other).number;
}

NSString* personOf(BBBulletin* bulletin)
{
    return ivarsOf<BulletinState>(bulletin).person;
}

void registerBBBulletin()
{
    SimulatedClass<BulletinState>("BBBulletin", "NSObject")
        .method<"sectionID">(text<&BulletinContents::sectionID>)
        .method<"title">(text<&BulletinContents::title>)
        .method<"message">(text<&BulletinContents::message>)
        .registerClass();
}

} // namespace simulator
