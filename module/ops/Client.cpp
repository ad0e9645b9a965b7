// Operations on the client itself.

#include "module/CryptoModule.h"

// Forgets the client with its current stores; answers with nothing.
void CCryptoModule::ReleaseClient(ca::CryptPacket& packet) {
    m_clients.Remove(packet.request.clientId);
}
