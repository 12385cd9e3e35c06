#pragma once

#include <unwind.h>

#include "simulator/loader/macho/MachOFile.hpp"
#include "simulator/loader/macho/UnwindTables.hpp"

/// How an exception passes through the functions of a library of the phone on armv7, which has no unwind tables. A function with
/// clean-ups registers a context while it runs ("SJLJ exception handling" in "Exception Handling in LLVM").
namespace simulator::macho::armv7 {

struct FunctionContext;

void enterFunctionWithCleanUps(FunctionContext* context);
void leaveFunctionWithCleanUps(FunctionContext* context);

/// The personality of every function of such a library ("Exception Handling ABI for the Arm Architecture").
_Unwind_Reason_Code unwindPhoneFrame(_Unwind_State state, _Unwind_Control_Block* exception, _Unwind_Context* context);

/// Puts the library that lies at `start` into the table in which the unwinder finds the personality.
UnwindTables registerUnwindTables(const MachOFile& file, const std::byte* start);

} // namespace simulator::macho::armv7
