#pragma once

#include "simulator/loader/macho/Bytes.hpp"

namespace simulator::macho {

/// Checks an embedded code signature as the phone's kernel does before it lets code run ("cs_blobs.h", XNU): each page of the
/// file up to the signature, and each other blob that a code directory has a hash of, must have the hash that stands in the
/// SHA-1 code directory, and in the SHA-256 one where there is one. Who signed is not asked.
///
/// `slice` is the library for one processor; the signature lies at that place in it. Throws
/// std::runtime_error with what does not match.
void verifyCodeSignature(Bytes slice, std::size_t signatureOffset, std::size_t signatureSize);

} // namespace simulator::macho
