#pragma once

#include "common/InitString.h"
#include "common/PKIConfigFileParser.h"
#include "module/ProviderCall.h"
#include "providers/openssl/Owners.h"

#include <string>
#include <vector>

namespace ca {

/// The policy of the configuration that a certificate is judged by: CERT_USAGE of the parameters
/// ("signing", "encryption", "timeStamping", "server"), else that for signing. Throws 16268 for
/// another name.
const PkiPolicy& PolicyOf(const CProviderCall& call);

/// Whether a certificate has the usages and purposes that a policy wants. Without the extension it
/// has all usages (RFC 5280, 4.2.1.3), but no purpose: the policy wants it named.
bool HasUsages(X509* certificate, const PkiPolicy& policy);

/// The policies of RFC 5280, 6.1.1 (c), dotted; empty: any. POLICY_SET of the parameters may narrow
/// what the configuration names, never widen it; throws 16268 when it leaves none.
std::vector<std::string> PolicySetOf(const InitString& params, const PkiPolicy& policy);

}  // namespace ca
