// Loads the library from the file that is its argument and prints what a parse makes of the search
// path. It reaches files that no library search path can name.

#include <dlfcn.h>

#include <cstdlib>
#include <iostream>

int main(int argc, char** argv) {
    void* library = argc == 2 ? dlopen(argv[1], RTLD_NOW | RTLD_LOCAL) : nullptr;
    void* symbol = library == nullptr ? nullptr : dlsym(library, "OrvexTestCommandLineParser_Parse");
    if (symbol == nullptr) {
        std::cerr << dlerror() << '\n';
        return EXIT_FAILURE;
    }
    char name[] = "layout_loader";
    char option[] = "-tl";
    char value[] = "DravikGTC";
    char* arguments[] = {name, option, value};
    const int result = reinterpret_cast<int (*)(int, char**)>(symbol)(3, arguments);
    std::cout << "parse: " << (result == 1 ? "true" : "false") << '\n';
    const char* path = std::getenv("GENICAM_GENTL64_PATH");
    std::cout << "path: " << (path == nullptr ? "(undefined)" : path) << '\n';
    return EXIT_SUCCESS;
}
