// plaveno-cli: the program's work on projects without a window.

#include <cstdio>
#include <cstring>

namespace {

void PrintUsage(FILE* out)
{
    fputs("Usage: plaveno-cli [--help] [--version] VERB [ARGS...]\n"
          "\n"
          "Works on Plaveno projects without a display.\n"
          "\n"
          "Options:\n"
          "  -h, --help     show this help and exit\n"
          "  -V, --version  show the program's version and exit\n",
          out);
}

} // namespace

int main(int argc, char* argv[])
{
    if (argc < 2) {
        PrintUsage(stderr);
        return 2;
    }
    const char* first = argv[1];
    if (strcmp(first, "--help") == 0 || strcmp(first, "-h") == 0) {
        PrintUsage(stdout);
        return 0;
    }
    if (strcmp(first, "--version") == 0 || strcmp(first, "-V") == 0) {
        printf("plaveno-cli %s\n", PLAVENO_VERSION_TEXT);
        return 0;
    }
    fprintf(stderr, "plaveno-cli: unknown verb or option '%s'\nTry 'plaveno-cli --help'.\n", first);
    return 2;
}
