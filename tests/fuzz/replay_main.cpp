// Runs a fuzz target over every file of a corpus, with any compiler.
//
//   <target>_replay FOLDER|FILE...
//
// Ends with 1 when there is nothing to run. A finding ends the process; the last line names the file.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

std::vector<std::filesystem::path> filesOf(const std::filesystem::path& path) {
    if (!std::filesystem::is_directory(path)) {
        return {path};
    }
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(path)) {
        files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    return files;
}

void replay(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    std::vector<char> bytes((std::istreambuf_iterator<char>(stream)), std::istreambuf_iterator<char>());
    if (!stream.is_open() || stream.bad()) {
        throw std::runtime_error("cannot read " + file.string());
    }
    std::cerr << file.string() << std::endl;
    // A copy without spare room, so that a sanitizer sees a read behind the end.
    bytes.shrink_to_fit();
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
}

int replayAll(const std::vector<std::string>& paths) {
    std::size_t count = 0;
    for (const std::string& path : paths) {
        for (const std::filesystem::path& file : filesOf(path)) {
            replay(file);
            ++count;
        }
    }
    std::cerr << count << " inputs\n";
    return count == 0 ? 1 : 0;
}

}  // namespace

int main(int argc, char** argv) {
    try {
        return replayAll(std::vector<std::string>(argv + 1, argv + argc));
    } catch (const std::exception& error) {
        std::cerr << error.what() << "\n";
        return 1;
    }
}
