#pragma once

namespace simulator {

/// Puts the zeroing of weak references in place. To be called once, before the first weak reference is stored. The entry
/// points themselves are exported under the phone's names (platform/runtime/objc.hpp).
void addRuntimeEntryPoints();

} // namespace simulator
