// Runs a fuzz target's entry point over every file in the folders given on the command
// line, so that seeds and every input a fuzzer once found to fail are replayed by the
// unit tests in every build. A folder that does not exist is skipped; a crash, a
// sanitizer report or a leak fails the test as it would fail the fuzzer.

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

int main(int argc, char **argv)
{
    namespace fs = std::filesystem;
    int files = 0;
    for (int i = 1; i < argc; ++i) {
        const fs::path dir(argv[i]);
        std::error_code error;
        if (!fs::is_directory(dir, error))
            continue;
        for (const auto &entry : fs::directory_iterator(dir)) {
            if (!entry.is_regular_file())
                continue;
            std::ifstream in(entry.path(), std::ios::binary);
            const std::vector<char> bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
            LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t *>(bytes.data()), bytes.size());
            ++files;
        }
    }
    std::printf("replayed %d inputs\n", files);
    return files > 0 ? 0 : 1;
}
