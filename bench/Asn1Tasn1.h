#pragma once

#include "bench/Asn1Inputs.h"

#include <benchmark/benchmark.h>

/// Times libtasn1 over a CRL. In a source of its own: its header redefines names of OpenSSL.
void ParseTasn1Crl(benchmark::State& state, const Octets& data);
