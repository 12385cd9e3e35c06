#pragma once

#include <memory>

namespace simulator::macho {

/// What keeps the unwind tables of a library known to this process's unwinder: they are taken from it with the last owner, as
/// they must be before the library's memory goes. None for a library without tables.
using UnwindTables = std::shared_ptr<const void>;

} // namespace simulator::macho
