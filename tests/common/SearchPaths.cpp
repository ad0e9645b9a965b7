// Prints where this process looks for its configuration, as SecureExecutionTest.cpp runs it with
// other rights.

#include "common/ConfigFileParser.h"
#include "common/Encode.h"
#include "common/PKIConfigFileParser.h"

#include <cstdlib>
#include <iostream>
#include <sys/auxv.h>

int main() {
    std::cout << (::getauxval(AT_SECURE) != 0 ? "secure" : "plain") << '\n';
    for (const std::wstring& path : ca::ConfigFileParser::SearchPaths()) {
        std::cout << ca::u16u8(path) << '\n';
    }
    std::cout << "user " << ca::u16u8(ca::ConfigFileParser::GetConfigDir(ca::kConfigUser)) << '\n';
    ca::PKIConfigFileParser pki;
    std::wstring errorText;
    // Only a file that the environment names must exist.
    std::cout << (pki.ReadConfig({}, errorText, /*silent=*/true) ? "" : "PKI of the environment\n");
    std::cout.flush();
    std::_Exit(0);  // a leak checker at the exit cannot look into a process with lent rights
}
