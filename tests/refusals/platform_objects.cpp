#include "platform/UIKit/UILabel.hpp"
#include "platform/runtime/Owned.hpp"
#include "platform/runtime/Strong.hpp"

/// What the compiler lets nobody do with platform objects. It is compiled with clang's -verify: each line must be refused for
/// the reason behind it, and no other line may be.

Owned<UILabel> newLabel();
Strong<UIView> slot;

// An object lives where the runtime made it.

void deletedSpecialMembers(UILabel* label, UILabel* other)
{
    UILabel onTheStack;        // expected-error {{deleted}}
    UILabel ofBraces{};        // expected-error {{deleted}}
    UIView* made = new UIView; // expected-error {{deleted}}
    UILabel copied = *label;   // expected-error {{deleted}}
    *label = *other;           // expected-error {{deleted}}
    delete label;              // expected-error {{deleted}}
}

// A plain pointer does not outlive its owner.

CGRect ofALivingOwner()
{
    const Owned<UILabel> label = newLabel();
    UIView* const view = label;
    return view->frame();
}

CGRect ofATemporary()
{
    return newLabel()->frame();
}

CGRect ofATemporaryThatIsGone()
{
    UIView* const converted = newLabel(); // expected-error {{will be destroyed}}
    UIView* const got = newLabel().get(); // expected-error {{will be destroyed}}
    return converted == got ? converted->frame() : CGRectZero;
}

UIView* released()
{
    const Owned<UILabel> label = newLabel();
    return label; // expected-error {{stack memory}}
}

UIView* autoreleased()
{
    return newLabel().autorelease();
}

// An owner hands over to an owner of a superclass, never the other way.

Owned<UIView> ofASuperclass()
{
    slot = newLabel();
    return newLabel();
}

Owned<UILabel> ofASubclass(Owned<UIView> view)
{
    return view; // expected-error {{no viable conversion}}
}

// A const receiver takes what changes nothing.

CGRect constReceiver(const UIView* view)
{
    view->setHidden(true); // expected-error {{const}}
    return view->frame();
}

// An owner is not sent: the method would not know that it owns.

void ownerAsAnArgument(UIView* view)
{
    send<"addSubview:">(view, newLabel()); // expected-error@*:* {{only plain values are sent}}
}
