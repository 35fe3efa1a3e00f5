#include "OrvexTestCommandLineParserC.h"

int main(int argc, char** argv) {
    return argc > 0 && OrvexTestCommandLineParser_Parse(argc, argv) == 1 ? 0 : 1;
}
