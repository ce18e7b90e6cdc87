# On a Mac: Homebrew's packages where they are installed, else the releases of the projects
# themselves. What is found or fetched here answers the calls of find_package() further down.
include(FetchContent)

FetchContent_Declare(nlohmann_json SYSTEM
    URL https://github.com/nlohmann/json/archive/refs/tags/v3.11.3.tar.gz
    URL_HASH SHA256=0d8ef5af7f9794e3263480193c491549b2ba6cc74bb018906202ada498a79406
    DOWNLOAD_EXTRACT_TIMESTAMP ON
    FIND_PACKAGE_ARGS 3.11 GLOBAL)
FetchContent_MakeAvailable(nlohmann_json)

if(QUILLBAR_TESTS)
    set(INSTALL_GTEST OFF)
    FetchContent_Declare(GTest SYSTEM
        URL https://github.com/google/googletest/archive/refs/tags/v1.17.0.tar.gz
        URL_HASH SHA256=65fab701d9829d38cb77c14acdc431d2108bfdbf8979e40eb8ae567edf10b27c
        DOWNLOAD_EXTRACT_TIMESTAMP ON
        FIND_PACKAGE_ARGS GLOBAL)
    FetchContent_MakeAvailable(GTest)
endif()
