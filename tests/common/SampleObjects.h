#pragma once

// A self-signed certificate and a revocation list of it, made for the tests: an elliptic curve key,
// a Cyrillic name with a comma in it, from 2020 to 2054. A message of somebody else with the content
// inside and a countersignature, whose certificate is not in it. An envelope for that somebody, and
// for whoever holds a key that has no certificate.

// clang-format off
inline constexpr char kSampleCertificate[] =
    "-----BEGIN CERTIFICATE-----\n"
    "MIICOzCCAeKgAwIBAgIFAIChssMwCgYIKoZIzj0EAwIwTjELMAkGA1UEBhMCUlUx\n"
    "HzAdBgNVBAoMFtCg0L7QvNCw0YjQutCwLCDQntCe0J4xHjAcBgNVBAMMFdCY0LLQ\n"
    "sNC90L7QsiDQmNCy0LDQvTAgFw0yMDAxMDEwMDAwMDBaGA8yMDU0MDEwMTAwMDAw\n"
    "MFowTjELMAkGA1UEBhMCUlUxHzAdBgNVBAoMFtCg0L7QvNCw0YjQutCwLCDQntCe\n"
    "0J4xHjAcBgNVBAMMFdCY0LLQsNC90L7QsiDQmNCy0LDQvTBZMBMGByqGSM49AgEG\n"
    "CCqGSM49AwEHA0IABFlIwkiDxmpqaocWcmsm+1HYW1h9ErB55tQykVTdO/emv2Uo\n"
    "ATUH2VS+qAdnSeWNWFbFtnb6pE2laTfG8by6F1CjgaowgacwEgYDVR0TAQH/BAgw\n"
    "BgEB/wIBADAOBgNVHQ8BAf8EBAMCAQYwNgYDVR0RBC8wLYIJYS5leGFtcGxlgQ5p\n"
    "dmFuQGEuZXhhbXBsZYcQIAENuAAAAAAAAAAAAAAAATAqBgNVHR8EIzAhMB+gHaAb\n"
    "hhlodHRwOi8vYS5leGFtcGxlL2xpc3QuY3JsMB0GA1UdDgQWBBTwk38ONfw0ck22\n"
    "1d6pQ6+z2dPChzAKBggqhkjOPQQDAgNHADBEAiBQlW3fnLcnUhQUwnr65UG/oTMs\n"
    "jiTU5R307Ko6hUoU8wIgB3q7I0cRd6UYwotuhGgO7FSgyrYP9hV6e/kDNwghgN0=\n"
    "-----END CERTIFICATE-----\n";

inline constexpr char kSampleCrl[] =
    "-----BEGIN X509 CRL-----\n"
    "MIIBDjCBtAIBATAKBggqhkjOPQQDAjBOMQswCQYDVQQGEwJSVTEfMB0GA1UECgwW\n"
    "0KDQvtC80LDRiNC60LAsINCe0J7QnjEeMBwGA1UEAwwV0JjQstCw0L3QvtCyINCY\n"
    "0LLQsNC9Fw0yNjAxMDEwMDAwMDBaGA8yMDU0MDEwMTAwMDAwMFowIzAhAgIKGxcN\n"
    "MjYwMTAxMDAwMDAwWjAMMAoGA1UdFQQDCgEBoA4wDDAKBgNVHRQEAwIBATAKBggq\n"
    "hkjOPQQDAgNJADBGAiEA7+3BUJxwJ5SrgtWRTJsjtUZBHNS8TAh2tT2ugUfcZK0C\n"
    "IQCw8j48/ysTeRrYiJTAK40jJIJUAfarIb8NdIV6wkr77w==\n"
    "-----END X509 CRL-----\n";

inline constexpr char kSampleMessage[] =
    "-----BEGIN CMS-----\n"
    "MIIDiQYJKoZIhvcNAQcCoIIDejCCA3YCAQExDTALBglghkgBZQMEAgEwGQYJKoZI\n"
    "hvcNAQcBoAwECkRlYXIgQW5uLAqgggGEMIIBgDCCASegAwIBAgICChEwCgYIKoZI\n"
    "zj0EAwIwLzELMAkGA1UEBhMCUlUxIDAeBgNVBAMMF9CQ0L3QvdCwINCf0LXRgtGA\n"
    "0L7QstCwMCAXDTIwMDEwMTAwMDAwMFoYDzIwNTQwMTAxMDAwMDAwWjAvMQswCQYD\n"
    "VQQGEwJSVTEgMB4GA1UEAwwX0JDQvdC90LAg0J/QtdGC0YDQvtCy0LAwWTATBgcq\n"
    "hkjOPQIBBggqhkjOPQMBBwNCAATeZULhHsYkIMVPw9z9JvvaMRSXb/Zz5UgltnL5\n"
    "BHGnElz/eJvVPjEAowx7KOBuAbck23YLvKPstujAazx24bgqozEwLzAOBgNVHQ8B\n"
    "Af8EBAMCBsAwHQYDVR0OBBYEFG/aICxhHVoICHPUwfJ9zRXBbEzdMAoGCCqGSM49\n"
    "BAMCA0cAMEQCICOS3+9mc4pHNUa+6AzqX33ThnEuCENiIByHDtp3qVZKAiAN+dTe\n"
    "sdpUAKm9grYl4Yqe8Q2ybnoHOxfB93Sw0OzmrzGCAb0wggG5AgEBMDUwLzELMAkG\n"
    "A1UEBhMCUlUxIDAeBgNVBAMMF9CQ0L3QvdCwINCf0LXRgtGA0L7QstCwAgIKETAL\n"
    "BglghkgBZQMEAgGgaTAYBgkqhkiG9w0BCQMxCwYJKoZIhvcNAQcBMBwGCSqGSIb3\n"
    "DQEJBTEPFw0yNjExMjEwNzU1MTJaMC8GCSqGSIb3DQEJBDEiBCBzGqtSnm+/P3OO\n"
    "YYO/T0f5aRLBHinkn1Wx27WG81tPqzAKBggqhkjOPQQDAgRHMEUCIQC9jP5fYTny\n"
    "pBTPLfUc6P4Li0NLWZdv7i950CCRp/cWXwIgNQC9m/WPdwvFhocyc7xdvzD80InC\n"
    "+J7veCu7wGx7Acihga8wgawGCSqGSIb3DQEJBjGBnjCBmwIBATAzMC0xCzAJBgNV\n"
    "BAYTAlJVMR4wHAYDVQQDDBXQkdC+0YDQuNGBINCe0YDQu9C+0LICAgsiMAsGCWCG\n"
    "SAFlAwQCATAKBggqhkjOPQQDAgRIMEYCIQDnKexNMHVkH50JYSZOX+2DXd0RivRE\n"
    "+V1hPzCY3xVmlAIhAIxf4x9d0jbHNBQoPuMwwA3T6RT4W7iBhwOpVbs/eF0E\n"
    "-----END CMS-----\n";

inline constexpr char kSampleEnvelope[] =
    "-----BEGIN CMS-----\n"
    "MIIBcwYJKoZIhvcNAQcDoIIBZDCCAWACAQIxggEboYHVAgEDoFGhTzAJBgcqhkjO\n"
    "PQIBA0IABGN8rWSRBJOsojTgdsnI5xrC8vbV2YLzcBohe2KkXJMdSkhNVu3l8QHU\n"
    "G8/0xnsSnKs+Vc7rVZAjOo3JYcmvNpowGAYJK4EFEIZIPwACMAsGCWCGSAFlAwQB\n"
    "LTBjMGEwNTAvMQswCQYDVQQGEwJSVTEgMB4GA1UEAwwX0JDQvdC90LAg0J/QtdGC\n"
    "0YDQvtCy0LACAgoRBChRsfDppEmGfZTUZwAiDfeeLF6qPHXET+MjIN01q5QdI5oO\n"
    "mWEXG4y7okECAQQwBQQDwP/uMAsGCWCGSAFlAwQBBQQoGZjNHMlND/n7EPB/QLMl\n"
    "KRRJuLD6tTkSR7mNBDgh1K6KrSt069nbJzA8BgkqhkiG9w0BBwEwHQYJYIZIAWUD\n"
    "BAEqBBAgxP7/6rnEOLWnWE/M3osbgBC2o2FtcZN2oVpiIOGCUKnA\n"
    "-----END CMS-----\n";
// clang-format on
