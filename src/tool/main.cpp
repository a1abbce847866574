#include "tool/Comandi.h"

#include <exception>
#include <iostream>

#include <unistd.h>

int main(int argc, char** argv) {
    try {
        sonnel::Uscite uscite(std::cout, std::cerr, isatty(STDERR_FILENO) != 0);
        return sonnel::EseguiStrumento(argc, argv, uscite);
    } catch (const std::exception& errore) {
        std::cerr << "sonnel-tool: " << errore.what() << '\n';
        return 1;
    }
}
