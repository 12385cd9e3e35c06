#pragma once

#include <functional>

/// What a process leaves that is killed in the middle of its work.

/// Runs the work in a process of its own and kills that, by SIGKILL, right before the system call of that number, counted from 0
/// at the beginning of the work. False when the work is done before. Throws std::runtime_error where no process can be followed,
/// as under an emulator.
bool killAtSystemCall(long number, const std::function<void()>& work);
