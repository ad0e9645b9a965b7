#include "providers/openssl/ChainRecord.h"

#include "providers/openssl/PrivateKeys.h"
#include "records/AnswerBudget.h"
#include "records/fill/CertInfoFill.h"
#include "records/text/ExtensionText.h"

#include <memory>

namespace ca {

void FillIssuers(const std::vector<X509Ptr>& chain, std::size_t& room, CertInfo2& record) {
    CertInfo2* at = &record;
    for (std::size_t i = 1; i < chain.size(); ++i) {
        const std::vector<unsigned char> der = EncodingOf(chain[i].get());
        if (der.size() > room || !CAnswerBudget::HasRoomFor(der.size())) {
            AddMore(record.error, chain.size() - i);
            return;
        }
        room -= der.size();
        at->issuerCert = std::make_unique<CertInfo2>();
        at = at->issuerCert.get();
        FillCertInfo(der, *at);
    }
}

}  // namespace ca
