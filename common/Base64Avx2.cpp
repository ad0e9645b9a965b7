#include "common/Base64Paths.h"

namespace ca::base64 {

bool HasAvx2() {
    return __builtin_cpu_supports("avx2") != 0;
}

Base64Run DecodeAvx2(const char* in, std::size_t length, unsigned char* out) {
    return DecodePlain(in, length, out);
}

}  // namespace ca::base64
