#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size);

/// Runs a fuzz target over each file of a folder, in builds without the fuzzer.
int main(int argumentCount, char** arguments)
{
    if (argumentCount != 2) {
        std::cerr << "usage: " << arguments[0] << " folder\n";
        return 2;
    }
    int files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(arguments[1])) {
        std::cout << entry.path().filename().string() << std::endl;
        std::ifstream stream(entry.path(), std::ios::binary);
        const std::string text(std::istreambuf_iterator<char>(stream), {});
        LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(text.data()), text.size());
        ++files;
    }
    std::cout << files << " inputs\n";
    return files > 0 ? 0 : 1;
}
