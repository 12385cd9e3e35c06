#include <cstdio>
#include <cstdlib>

#include "platform/runtime/checked_send.hpp"

/// A send whose types are not the method's ends the process: what it does depends on the processor.
void sendMismatched(const SendMismatch& mismatch)
{
    std::fprintf(stderr, "%c[%s %s] is sent as %s, but declared as %s\n", class_isMetaClass(mismatch.cls) != NO ? '+' : '-',
                 class_getName(mismatch.cls), sel_getName(mismatch.selector), mismatch.sent, mismatch.declared);
    std::abort();
}
