#include "module/CallContext.h"

#include "common/Cleanse.h"
#include "common/DecimalText.h"
#include "module/CryptoModule.h"

#include <algorithm>

namespace {

// Operations that use neither a client nor parameters; 43 belongs to hosts that have no such mode.
constexpr int kModesWithoutContext[] = {11, 24, 42, 43};

bool NeedsContext(const ca::CryptRequest& request) {
    return request.test ||
           std::ranges::find(kModesWithoutContext, request.mode) == std::end(kModesWithoutContext);
}

}  // namespace

CCallContext::CCallContext(ca::CryptPacket& packet, CCryptoModule* module, bool mayUseKeys)
    : m_packet(packet), m_module(module), m_mayUseKeys(mayUseKeys) {
    if (NeedsContext(packet.request)) {
        m_hasParams = !packet.request.extInitParams.empty();
        m_use = module->Clients().Use(packet.request.clientId);
    }
    packet.context = this;
}

CCallContext::~CCallContext() {
    m_packet.context = nullptr;
    ca::CleanseText(m_initParams);
}

const ca::InitString& CCallContext::RequestParams() {
    // Read once, at the first question.
    if (m_hasParams) {
        m_requestParams.Append(m_packet.request.extInitParams);
        m_hasParams = false;
    }
    return m_requestParams;
}

const std::wstring& CCallContext::InitParams() {
    if (m_initParams.empty()) {
        // The configuration first, then what the request says on top of it.
        std::wstring text = m_module->BaseInitParams();
        if ((m_packet.request.present & ca::kPresentCertInclude) != 0) {
            text += L"CERT_INCLUDE=" + ca::DecimalText(m_packet.request.certInclude) + L';';
        }
        std::wstring own = RequestParams().ToString();
        m_initParams.reserve(text.size() + own.size());
        m_initParams.append(text).append(own);
        ca::CleanseText(own);
    }
    return m_initParams;
}
