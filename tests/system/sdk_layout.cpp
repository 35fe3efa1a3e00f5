#include "system/sdk_layout.h"

#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <stdexcept>

namespace fs = std::filesystem;

namespace {

std::vector<char*> pointersTo(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    pointers.reserve(texts.size() + 1);
    for (std::string& text : texts) {
        pointers.push_back(text.data());
    }
    pointers.push_back(nullptr);
    return pointers;
}

std::string readAll(int file) {
    std::string text;
    std::array<char, 4096> buffer = {};
    for (ssize_t size = read(file, buffer.data(), buffer.size()); size > 0;
         size = read(file, buffer.data(), buffer.size())) {
        text.append(buffer.data(), static_cast<std::size_t>(size));
    }
    return text;
}

std::string run(std::vector<std::string> commandLine, const Environment& environment,
                const fs::path& currentDirectory) {
    std::vector<std::string> variables;
    for (const auto& [name, value] : environment) {
        variables.push_back(std::string(name).append("=").append(value));
    }
    const std::vector<char*> argumentPointers = pointersTo(commandLine);
    const std::vector<char*> variablePointers = pointersTo(variables);

    int ends[2];
    if (pipe(ends) != 0) {
        throw std::runtime_error("cannot create a pipe");
    }
    const pid_t child = fork();
    if (child == 0) {
        if (chdir(currentDirectory.c_str()) == 0 && dup2(ends[1], STDOUT_FILENO) != -1) {
            execve(argumentPointers[0], argumentPointers.data(), variablePointers.data());
        }
        _exit(127);
    }
    close(ends[1]);
    std::string output = readAll(ends[0]);
    close(ends[0]);
    int status = -1;
    if (child == -1 || waitpid(child, &status, 0) != child || status != 0) {
        output += "ended with status " + std::to_string(status) + '\n';
    }
    return output;
}

}  // namespace

SdkLayoutTest::SdkLayoutTest(const fs::path& parent) {
    std::string name = (fs::canonical(parent) / "sdk_layout_XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) {
        throw std::runtime_error("cannot create " + name);
    }
    base = name;
}

SdkLayoutTest::~SdkLayoutTest() {
    fs::remove_all(base);
}

void SdkLayoutTest::installLibrary(const fs::path& directory) {
    const fs::path file = fs::path(LIBRARY_FILE).filename();
    fs::create_directories(directory);
    fs::copy_file(LIBRARY_FILE, directory / file);
    fs::create_symlink(file, directory / libraryName);
    fs::create_symlink(libraryName, directory / "libtestcommandlineparser.so");
}

void SdkLayoutTest::installSdk(const fs::path& sdk) {
    installLibrary(sdk / librariesWithoutLinks);
    const fs::path framework = sdk / "Frameworks/orvex.framework";
    fs::create_directory_symlink("A", framework / "Versions/Current");
    fs::create_directory_symlink("Versions/Current/Libraries", framework / "Libraries");
}

std::string SdkLayoutTest::runClient(const Environment& environment, const fs::path& currentDirectory,
                                     const std::vector<std::string>& arguments) {
    std::vector<std::string> commandLine = {CLIENT_FILE};
    commandLine.insert(commandLine.end(), arguments.begin(), arguments.end());
    return run(commandLine, environment, currentDirectory);
}

std::string SdkLayoutTest::runLoader(const std::string& file, const Environment& environment,
                                     const fs::path& currentDirectory) {
    return run({LOADER_FILE, file}, environment, currentDirectory);
}

std::string SdkLayoutTest::clientOutput(const std::string& directory, const std::string& path) {
    return "directory: " + directory + "\nparse: true\npath: " + path + "\n";
}

std::string SdkLayoutTest::withBase(std::string text) const {
    const std::string placeholder = "{base}";
    for (std::size_t found = text.find(placeholder); found != std::string::npos;
         found = text.find(placeholder)) {
        text.replace(found, placeholder.size(), base.string());
    }
    return text;
}
