// Prints the directory of this program.
#include <cstdio>

#include "common/file.h"

int main() {
    std::fputs(quill::getExePath().c_str(), stdout);
}
