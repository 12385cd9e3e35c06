#pragma once

#include <string>
#include <vector>

#include "platform/runtime/objc.hpp"

/// A message that was sent, by the class of its receiver.
struct RecordedSend {
    std::string receiver;
    std::string selector;
    bool operator==(const RecordedSend&) const = default;
};

/// The recorder's entry points, looked up by name: a process into which it is not preloaded does without them.
extern "C" {
/// Records from now on what code in the image sends; the image is named by the end of its path.
using BeginRecordingSends = void(const char* image);
/// The sends since then; they stand until the next recording.
using EndRecordingSends = const std::vector<RecordedSend>*();
}
