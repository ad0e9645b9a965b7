// Operations on streams.

#include "module/CryptoModule.h"
#include "module/Provider.h"
#include "module/ProviderCall.h"

void CCryptoModule::StreamEncode(ca::CryptPacket& packet) {
    ca::CProviderCall call(packet, *this);
    m_provider->StreamEncode(call);
}

void CCryptoModule::StreamDecoding(ca::CryptPacket& packet) {
    ca::CProviderCall call(packet, *this);
    m_provider->StreamDecoding(call);
}
