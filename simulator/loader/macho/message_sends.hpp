#pragma once

/// The phone's message sends, in the assembly of each processor ("Objective-C Runtime", Apple). arm64 has none that are for
/// structures alone.
extern "C" {
[[gnu::visibility("hidden")]] void phone_objc_msgSend();
[[gnu::visibility("hidden")]] void phone_objc_msgSendSuper();
[[gnu::visibility("hidden")]] void phone_objc_msgSend_stret();
[[gnu::visibility("hidden")]] void phone_objc_msgSendSuper_stret();
}
