# Debian package names by purpose; sourced by the scripts that install them.

# What building and running need.
BUILD_PACKAGES=(
    build-essential cmake ninja-build ccache pkg-config
    qtbase5-dev rapidjson-dev libcli11-dev
    libcurl4 libcurl4-openssl-dev ca-certificates libssl-dev openssl
)

# What the tests need on top.
TEST_PACKAGES=(
    libgtest-dev libgmock-dev xvfb xauth dpkg-dev file clang-14 libclang-rt-14-dev
    clang-format-14 clang-tidy-14 gnutls-bin gpgsm libengine-gost-openssl
)

# The peers that the benchmarks are linked with.
BENCH_PACKAGES=(
    libbenchmark-dev libssl-dev libbotan-2-dev libtasn1-6-dev libmodpbase64-dev libglib2.0-dev
    libgnutls28-dev openssl locales
)
