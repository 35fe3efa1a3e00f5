// A C++ program that does almost nothing; library.cpp is the same with a parse.
#include <string>
#include <vector>

int main(int argc, char** argv) {
    const std::vector<std::string> arguments(argv, argv + argc);
    return arguments.empty() ? 1 : 0;
}
