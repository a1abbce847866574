// Any bytes as a line of the queue's file: what is read of it is written as a line that reads the
// same.

#include "Fuzz.h"

#include "player/Coda.h"

void sonnel::Check(const std::string& bytes) {
    const std::string line = bytes.substr(0, bytes.find_first_of("\r\n"));
    if (const auto turn = TurnoDaRiga(line)) {
        const std::string written = RigaTurno(*turn);
        Require(written.find_first_of("\r\n") == std::string::npos);
        const auto again = TurnoDaRiga(written);
        Require(again && RigaTurno(*again) == written && again->file == turn->file);
        Require(!turn->tonalita || (*turn->tonalita >= -12 && *turn->tonalita <= 12));
    }
}
