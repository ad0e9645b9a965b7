#pragma once

#include "records/SignInfo.h"

#include <cstdint>
#include <map>
#include <span>

namespace ca {

class CFileDocument;

/// What the provider of this library finds of the signatures that are shown, with the configuration
/// that a module would read. A message is verified when one of its signatures is looked at first, and
/// again in another language. Nothing is fetched for it: a window must not wait for servers, nor
/// tell them what is read in it. Not for several threads.
class CSignatureVerdicts {
  public:
    /// The record of a signature or countersignature with its verdict; null where there is none: by
    /// a provider that verifies nothing, of too large a message, of one that cannot be read.
    const SignInfo* Of(const CFileDocument& document, std::uint32_t signature);

  private:
    struct Verified {
        std::uint32_t language = 0;
        SignInfos signatures;
    };

    std::map<std::uint32_t, Verified> m_messages;  // by item
};

}  // namespace ca
