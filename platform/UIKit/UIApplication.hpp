#pragma once

#include "platform/Foundation/NSObject.hpp"

/// The running application.
class UIApplication : public NSObject {
public:
    static UIApplication* sharedApplication() { return send<"sharedApplication", UIApplication*>(classNamed<"UIApplication">()); }
    /// SpringBoard's own: ends the process and starts it again.
    void _relaunchSpringBoardNow() { send<"_relaunchSpringBoardNow">(this); }
};
