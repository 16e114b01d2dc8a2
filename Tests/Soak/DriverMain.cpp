// Takes cards through the library, round by round, and says after each what is held: one JSON object a line. It goes on
// when it is told to by a line, so that whoever watches it can look while nothing is under way.
// usage: SoakDriver --server URL --cards N --round N [--list FILE] [--plant WHAT]
#include "Soak/HeapInUse.h"
#include "Soak/ListedCards.h"
#include "Soak/PlannedCards.h"
#include "Soak/SoakRun.h"

#include <algorithm>
#include <csignal>
#include <exception>
#include <iostream>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

namespace {

using Options = std::map<std::string, std::string>;

Options optionsFrom(int argc, char** argv) {
    Options options{{"--server", ""}, {"--cards", "200"}, {"--round", "10"}, {"--list", ""}, {"--plant", ""}};
    for (int index = 1; index + 1 < argc; index += 2) {
        const auto option = options.find(argv[index]);
        if (option == options.end()) throw std::runtime_error("no option " + std::string(argv[index]));
        option->second = argv[index + 1];
    }
    return options;
}

std::unique_ptr<soak::SoakCards> cardsFrom(const Options& options) {
    if (options.at("--list").empty()) return std::make_unique<soak::PlannedCards>();
    return std::make_unique<soak::ListedCards>(options.at("--list"));
}

void tell(int cards, const soak::SoakRun& run) {
    const auto heap = soak::heapInUse();
    std::cout << R"({"cards": )" << cards << R"(, "completed": )" << run.completed() << R"(, "cancelled": )"
              << run.cancelled() << R"(, "searches": )" << run.people().searches() << R"(, "created": )"
              << run.people().created() << R"(, "updated": )" << run.people().updated() << R"(, "problems": )"
              << run.problems().size() << R"(, "heap": )" << (heap ? std::to_string(*heap) : "null") << "}"
              << std::endl;
}

int drive(const Options& options) {
    const auto cards = cardsFrom(options);
    const auto planted =
        options.at("--plant").empty() ? soak::Planted::Nothing : soak::plantedNamed(options.at("--plant"));
    soak::SoakRun run(*cards, options.at("--server"), planted);
    const int all = std::stoi(options.at("--cards"));
    const int step = std::max(1, std::stoi(options.at("--round")));
    std::string go;
    for (int first = 0; first < all; first += step) {
        const int end = std::min(first + step, all);
        run.round(first, end);
        tell(end, run);
        if (!std::getline(std::cin, go)) return 2;
    }
    for (const std::string& problem : run.problems())
        std::cerr << problem << '\n';
    return run.problems().empty() ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) try {
    (void)std::signal(SIGPIPE, SIG_IGN);
    return drive(optionsFrom(argc, argv));
} catch (const std::exception& problem) {
    std::cerr << "SoakDriver: " << problem.what() << '\n';
    return 2;
}
