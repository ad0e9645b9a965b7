// Operations of the interface that this provider does not have yet. They refuse, so that nobody
// takes an empty answer for a result.

#include "common/ErrorCodes.h"
#include "common/Exception.h"
#include "module/CryptoModule.h"

namespace {

[[noreturn]] void Refuse() {
    throw ca::Exception(ca::kErrModeNotSupported);
}

}  // namespace

void CCryptoModule::ShowCert(ca::CryptPacket&) {
    Refuse();
}
