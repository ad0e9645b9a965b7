#pragma once

#include "common/Http.h"
#include "common/InitString.h"
#include "common/PKIConfigFileParser.h"
#include "module/ClientContext.h"
#include "module/CryptPacket.h"

#include <string>
#include <vector>

class CCryptoModule;

namespace ca {

/// What a provider may know and do about the call that it works for, beside the operation's own
/// arguments. Lives as long as the call; one thread's.
class CProviderCall {
  public:
    CProviderCall(CryptPacket& packet, CCryptoModule& module)
        : m_packet(packet), m_module(module) {}
    CProviderCall(const CProviderCall&) = delete;
    CProviderCall& operator=(const CProviderCall&) = delete;
    ~CProviderCall() = default;

    /// The stores that the request brings ("storeAddresses", "storeAddress", "currentStores", the
    /// first that has any), else the client's current ones. May be empty.
    StoreAddresses Stores() const;
    /// The certificates (DER) in the client's temporary store, and others in their place. False,
    /// with everything as it was, when they take more memory than all clients may.
    CertificatesSnapshot TempCertificates() const;
    bool ReplaceTempCertificates(std::vector<std::vector<unsigned char>> certificates);
    /// The request may use private keys: the gate is open to it.
    bool MayUseKeys() const;
    /// The parameters of the call. May hold passwords, see InitString::ToLogString(). Throws 16268
    /// for a text that breaks the grammar.
    InitString Params() const;
    const PkiSettings& Pki() const;
    /// How something is fetched for the call: the configuration's proxy, and for requests through
    /// the service the hosts that `network.fetch` allows.
    HttpSettings FetchSettings() const;
    /// No window may be opened.
    bool IsSilent() const;
    /// Puts the certificate that the operation lacks into the answer.
    void NeedCert(std::wstring id);

  private:
    CryptPacket& m_packet;
    CCryptoModule& m_module;
};

}  // namespace ca
