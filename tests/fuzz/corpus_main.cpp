// Runs a target once with each file of the folders and files on its command line, in the place of libFuzzer:
// so every build, with any compiler, passes the inputs that are kept. A finding ends the process; the last
// name printed is the input's.
#include "fuzz/fuzz.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

extern "C" __attribute__((weak)) int LLVMFuzzerInitialize(int* argc, char*** argv);

namespace {

namespace fs = std::filesystem;

std::vector<fs::path> inputsOf(int argc, char** argv)
{
    std::vector<fs::path> inputs;
    for (int i = 1; i < argc; ++i) {
        if (!fs::is_directory(argv[i])) {
            inputs.push_back(argv[i]);
            continue;
        }
        for (const fs::directory_entry& entry : fs::directory_iterator(argv[i]))
            inputs.push_back(entry.path());
    }
    std::sort(inputs.begin(), inputs.end());
    return inputs;
}

} // namespace

int main(int argc, char** argv)
{
    if (LLVMFuzzerInitialize)
        LLVMFuzzerInitialize(&argc, &argv);
    const std::vector<fs::path> inputs = inputsOf(argc, argv);
    for (const fs::path& input : inputs) {
        fprintf(stderr, "%s\n", input.c_str());
        std::ifstream file(input, std::ios::binary);
        const std::string bytes((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
        if (!file.is_open())
            return 1;
        const auto copy = fuzz::exactCopy(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size());
        LLVMFuzzerTestOneInput(copy.get(), bytes.size());
    }
    LLVMFuzzerTestOneInput(nullptr, 0);
    fprintf(stderr, "%zu inputs\n", inputs.size());
    return inputs.empty(); // a corpus that isn't there has proved nothing
}
