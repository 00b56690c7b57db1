#include "Platform/Foundation/ProcessSetUp.h"

#include "Platform/Foundation/TemporaryDirectory.h"

#include <clocale>
#include <csignal>
#include <malloc.h>

namespace anadrome {

void setUpProcess(int argc, char** argv) {
    TemporaryDirectory::finishRemovalIfAsked(argc, argv);
    // A full disk, a file-size limit and a reader that went away are errors of the write, not the end of the
    // program.
    std::signal(SIGXFSZ, SIG_IGN);
    std::signal(SIGPIPE, SIG_IGN);
    // Many threads allocate pictures, and every heap keeps what its threads gave back.
    ::mallopt(M_ARENA_MAX, 2);
}

void setUpNumbers() {
    std::setlocale(LC_NUMERIC, "C");
}

} // namespace anadrome
