#pragma once

#include "common/ConfigFileParser.h"
#include "common/Http.h"
#include "common/Log.h"
#include "common/LogClaim.h"
#include "common/PKIConfigFileParser.h"
#include "module/ClientContext.h"
#include "module/CryptPacket.h"
#include "module/StreamArray.h"
#include "module/mod_foo.h"
#include "records/fill/KnownIssuers.h"

#include <memory>
#include <string>
#include <vector>

namespace ca {

class IProvider;

/// The JSON front end of a module: reads a request, has it run, and frames the answer.
class CryptoModule {
  public:
    /// Runs one decoded request. \param interactive  see CMPacket.
    virtual void ProcessClientRequest(CryptPacket& packet, bool interactive) = 0;

    CryptoModule(const CryptoModule&) = delete;
    CryptoModule& operator=(const CryptoModule&) = delete;

    /// Runs the host's request and sets its answer. Every ca::Exception becomes an answer; other
    /// exceptions leave, the packet's answer being untouched then.
    void ProcessJson(CMPacket& packet);

    /// Answers 16197 to a request that ended in an exception outside these layers; without
    /// memory even for that, null and size 0. Throws nothing but the unwinding of a cancelled
    /// thread. Not to be called inside a handler.
    /// \param why  what the exception said, UTF-8; for the log.
    static void AnswerFailure(CMPacket& packet, const char* why);

    /// Reads the service configuration. What is wrong with it is shown to the user, or kept for
    /// TakeWarnings() where nothing can be shown. Always true: defaults stand in.
    bool ReadConfig();
    /// The same for the PKI configuration that belongs to it. A file that is there and cannot be
    /// read allows no host to requests that come through the service.
    void ReadPkiConfig();

    const ConfigFileParser& Config() const noexcept { return m_config; }
    const PKIConfigFileParser& PkiConfig() const noexcept { return m_pkiConfig; }

  protected:
    // Deliberate: no virtual destructor here; the table of virtual operations is fixed, and nothing
    // is destroyed through this class.
    explicit CryptoModule(bool silent) : m_silent(silent) {}
    ~CryptoModule() = default;

    /// The warnings that could not be shown, each as one line.
    std::vector<std::wstring> TakeWarnings();

    bool m_silent;  ///< no user interface
    ConfigFileParser m_config;

  private:
    void LogPayload(CryptPacket& packet) const;
    void SetTransfers(bool isPkiConfigRead);
    void WarnOfConfig(bool wasRead, const std::wstring& errorText);

    PKIConfigFileParser m_pkiConfig;
    TransferSettings m_ownTransfers;      // of requests of the user's own process
    TransferSettings m_serviceTransfers;  // of requests that come through the service
    std::vector<std::wstring> m_warnings;
};

}  // namespace ca

/// The module: everything around the operations of a provider, which the library that it is linked
/// into brings (module/Provider.h). Requests run on any number of threads at once.
class CCryptoModule : public ca::CryptoModule {
  public:
    explicit CCryptoModule(bool silent);

    /// Logs, checks the permission and runs the operation that the packet's mode names. Faults of
    /// the operation end up in the packet's error fields; only std::exception leaves.
    void ProcessClientRequest(ca::CryptPacket& packet, bool interactive) override;

    virtual ~CCryptoModule();

    /// Reads the configuration, then logs through `log`. False: the module cannot be used.
    bool Init(LogCallback log);
    /// Forgets all clients.
    void CleanUp();

    CClientContextArray& Clients() noexcept { return m_clients; }
    const CStreamArray& Streams() const noexcept { return m_streams; }
    /// The configuration's part of every call's parameter text, see ca::BuildBaseInitString().
    const std::wstring& BaseInitParams() const noexcept { return m_baseInitParams; }
    /// No window may be shown.
    bool IsSilent() const noexcept { return m_silent; }
    /// See ca::IProvider.
    bool Verifies() const noexcept;

  private:
    using Handler = void (CCryptoModule::*)(ca::CryptPacket& packet);

    /// What a row asks of a request that comes through the service.
    enum Gate : bool {
        kOpen = false,
        kGated = true,  ///< uses a private key or shows a window: needs the permission
    };

    /// One operation of the interface.
    struct CModeRow {
        int mode;
        const wchar_t* logText;  ///< null: nothing to log and nothing to call
        Handler handler;         ///< null with `logText`
        Gate gate;
    };

    static const CModeRow kModes[];  ///< ascending by mode
    /// The row of a mode; null when there is none.
    static const CModeRow* FindMode(int mode) noexcept;

    void RunMode(ca::CryptPacket& packet);

    // The handlers, by subject in ops/. Each reads the packet's request, asks the provider where an
    // operation is the provider's, puts the results into the response's container, and fails by
    // throwing ca::Exception, whose text says what the code does not. The dispatch logs code, text
    // and source position, unless ca::LogError() threw it.
    void Encrypt(ca::CryptPacket& packet);
    void Sign(ca::CryptPacket& packet);
    void Verify(ca::CryptPacket& packet);
    void SetCert(ca::CryptPacket& packet);
    void GetCertInfo(ca::CryptPacket& packet);
    void GetCRL(ca::CryptPacket& packet);
    void CertValidation(ca::CryptPacket& packet);
    void CoSign(ca::CryptPacket& packet);
    void GetSignInfo(ca::CryptPacket& packet);
    void ShowSign(ca::CryptPacket& packet);
    void StreamEncode(ca::CryptPacket& packet);
    void StreamDecoding(ca::CryptPacket& packet);
    void GetCertInfo2(ca::CryptPacket& packet);
    void GetCert(ca::CryptPacket& packet);
    void SetCurStore(ca::CryptPacket& packet);
    void EnumStore(ca::CryptPacket& packet);
    void EnumCerts(ca::CryptPacket& packet);
    void ShowCert(ca::CryptPacket& packet);
    void TranslateCRL2(ca::CryptPacket& packet);
    void GetRecipientsList(ca::CryptPacket& packet);
    void GetSignType(ca::CryptPacket& packet);
    void SetCert2(ca::CryptPacket& packet);
    void GetCurStore(ca::CryptPacket& packet);
    void CreateHash(ca::CryptPacket& packet);
    void SignRaw(ca::CryptPacket& packet);
    void VerifyRaw(ca::CryptPacket& packet);
    void SignHash(ca::CryptPacket& packet);
    void GetSignInfo2(ca::CryptPacket& packet);
    void SignHashRaw(ca::CryptPacket& packet);
    void ReleaseClient(ca::CryptPacket& packet);
    void ParseCert(ca::CryptPacket& packet);

    CClientContextArray m_clients;
    CStreamArray m_streams;
    std::wstring m_baseInitParams;
    ca::CLogClaim m_logClaim;
    ca::CKnownIssuers m_issuers;  // of the PKI configuration's locations
    std::unique_ptr<ca::IProvider> m_provider;
};
