// Attacks the helper on a bus: nonsense, floods, callers that vanish, and thousands of connections.
//
//   attack BUS SECONDS SEED [CONNECTIONS]      BUS is "system" or an address; SECONDS for each kind; 10000
//   connections
//
// Prints what was sent. Exits with 1 when the bus cannot be reached, or a connection that asked for something
// sensible got no answer.

#include <cstdlib>
#include <exception>
#include <iostream>
#include <string>

#include <fmt/format.h>

#include "tests/hostile/Attack.h"

namespace {

using namespace corvane;

bool attack(const std::string& bus, std::chrono::seconds seconds, std::uint64_t seed, int connections) {
    Attack attack(bus, seed);
    attack.sendNonsense(seconds);
    attack.flood(seconds);
    attack.vanish(seconds);
    attack.connect(connections);
    fmt::print("{} messages on {} connections, seed {}; {} of the last {} calls answered\n",
               attack.messages(), attack.connections(), seed, attack.answers(), connections);
    return attack.messages() > 0 && attack.answers() == connections;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 4) {
        std::cerr << "usage: attack BUS SECONDS SEED [CONNECTIONS]\n";
        return 2;
    }
    try {
        return attack(argv[1], std::chrono::seconds(std::stol(argv[2])), std::stoull(argv[3]),
                      argc > 4 ? std::stoi(argv[4]) : 10000)
                   ? 0
                   : 1;
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}
