// Writes what the ASN.1 benchmarks read into a folder, for tools that take files.

#include "bench/Asn1Inputs.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s FOLDER\n", argv[0]);
        return 2;
    }
    const std::filesystem::path folder = argv[1];
    std::filesystem::create_directories(folder);
    for (const Asn1Input& input : Asn1Inputs()) {
        std::string name = input.name;
        std::replace(name.begin(), name.end(), '/', '-');
        const Octets data = input.make();
        std::ofstream file(folder / (name + ".der"), std::ios::binary);
        file.write(reinterpret_cast<const char*>(data.data()),
                   static_cast<std::streamsize>(data.size()));
        file.close();
        if (!file) {
            std::fprintf(stderr, "%s: not written\n", name.c_str());
            return 1;
        }
        std::printf("%10zu %s\n", data.size(), name.c_str());
    }
    return 0;
}
