#pragma once

#include <string>

/// Objective-C exceptions. C++ catches them with `catch (...)` but cannot look at them, so the last one is remembered when
/// it is raised.
namespace simulator {

/// To be called once, before the first exception that is to be described.
void rememberRaisedExceptions();

/// Forgets the exceptions raised so far.
void forgetRaisedException();

/// "raised NAME: REASON" of the last exception raised since forgetRaisedException().
std::string describeRaisedException();

} // namespace simulator
