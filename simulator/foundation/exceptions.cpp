#include "simulator/foundation/exceptions.hpp"

#include <cstdlib>

namespace simulator {

void raise(NSString* name, NSString* reason)
{
    const id exception = send<"exceptionWithName:reason:userInfo:", id>(classNamed<"NSException">(), name, reason, id{nullptr});
    send<"raise">(exception);
    std::abort();
}

} // namespace simulator
