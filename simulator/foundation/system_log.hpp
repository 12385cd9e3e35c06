#pragma once

#include <string>
#include <vector>

class NSString;

/// GNUstep's hook for what becomes of a line that NSLog writes.
extern "C" void (*_NSLog_printf_handler)(NSString* line);

/// The system log, to which NSLog writes.
namespace simulator {

/// Starts collecting the lines. To be called once, before the first NSLog.
void openSystemLog();

/// The lines since the last call, oldest first, without time and process; they are forgotten.
std::vector<std::string> takeSystemLog();

} // namespace simulator
