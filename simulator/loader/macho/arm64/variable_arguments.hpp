#pragma once

/// NSLog with the variable arguments on the stack.
extern "C" [[gnu::visibility("hidden")]] void phoneLog();
