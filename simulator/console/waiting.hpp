#pragma once

#include <chrono>

/// Waiting, during which SpringBoard still hears the Darwin notifications that other processes post.
namespace simulator {

/// Waits until the descriptor can be read without delay, its end and its errors included.
void waitForInput(int descriptor);

void waitFor(std::chrono::duration<double> time);

} // namespace simulator
