#include "tool/Comandi.h"

#include <exception>
#include <iostream>

#include <fcntl.h>
#include <unistd.h>

namespace {

/// Without this a file that is written could get the number of a closed output, and the output
/// would be written into it.
void OccupaCanaliChiusi() {
    for (const int canale : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (fcntl(canale, F_GETFD) == -1) {
            // The wrong way round, so that using it still fails; it gets the lowest number free.
            (void)open("/dev/null", canale == STDIN_FILENO ? O_WRONLY : O_RDONLY);
        }
    }
}

}  // namespace

int main(int argc, char** argv) {
    OccupaCanaliChiusi();
    try {
        sonnel::Uscite uscite(std::cout, std::cerr, isatty(STDERR_FILENO) != 0);
        return sonnel::EseguiStrumento(argc, argv, uscite);
    } catch (const std::exception& errore) {
        std::cerr << "sonnel-tool: " << errore.what() << '\n';
        return 1;
    }
}
