// Operations of the interface that do nothing in this provider and answer with nothing.

#include "module/CryptoModule.h"

void CCryptoModule::StreamEncode(ca::CryptPacket&) {}
void CCryptoModule::CertValidation(ca::CryptPacket&) {}
void CCryptoModule::StreamDecoding(ca::CryptPacket&) {}
void CCryptoModule::TranslateCRL2(ca::CryptPacket&) {}
void CCryptoModule::ParseCert(ca::CryptPacket&) {}
void CCryptoModule::CoSign(ca::CryptPacket&) {}
void CCryptoModule::ShowSign(ca::CryptPacket&) {}
