/* A C program that does almost nothing; library.c is the same with a parse. */
int main(int argc, char** argv) {
    return argc > 0 && argv[0] != 0 ? 0 : 1;
}
