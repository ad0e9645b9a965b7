#pragma once

#include "common/InitString.h"
#include "module/ClientContext.h"
#include "module/CryptPacket.h"

#include <string>

class CCryptoModule;

/// What one call knows besides its packet; lives on the dispatch's stack and is linked into the
/// packet meanwhile.
class CCallContext {
  public:
    /// Acquires the client's context, which counts as used and is in use as long as this lives.
    /// Modes that have nothing to do (see the implementation) leave everything empty, unless the
    /// packet's test flag is set.
    /// \param mayUseKeys  the gate is open to the request.
    CCallContext(ca::CryptPacket& packet, CCryptoModule* module, bool mayUseKeys);
    CCallContext(const CCallContext&) = delete;
    CCallContext& operator=(const CCallContext&) = delete;
    ~CCallContext();

    bool MayUseKeys() const noexcept { return m_mayUseKeys; }

    /// The items of the request's "extInitParams". Throws what ca::InitString::Append() throws for
    /// a text that breaks the grammar; the dispatch asks before every operation, so that none runs
    /// with such a text.
    const ca::InitString& RequestParams();

    /// The parameter text of the call: the configuration's items, then the request's "certInclude"
    /// and "extInitParams", which win. Put together at the first question, since most operations
    /// never ask. May hold passwords, see ca::InitString::ToLogString(). Throws as RequestParams().
    const std::wstring& InitParams();

  private:
    ca::CryptPacket& m_packet;
    CCryptoModule* m_module;
    CClientContextArray::CUse m_use;
    bool m_mayUseKeys;
    bool m_hasParams = false;  // of the request, still to be read
    ca::InitString m_requestParams;
    std::wstring m_initParams;
};
