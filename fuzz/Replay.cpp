// Runs one target without a fuzzer: first every case of its corpus, then random mutations of them,
// the same ones each time. Arguments: the target, its corpus folder, the number of mutations. A
// failing case is saved in the working folder.
#include <algorithm>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "fuzz/Targets.h"

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/common_interface_defs.h>
#endif

namespace vorlane::fuzz {

namespace {

using Case = std::vector<std::uint8_t>;
using Target = void (*)(Input);

const std::map<std::string, Target> targets{{"alerts", alerts},
                                            {"reminders", reminders},
                                            {"history", history},
                                            {"settings", settings},
                                            {"supplies", supplies},
                                            {"upower", upower},
                                            {"notifications", notifications},
                                            {"tray", tray},
                                            {"windows", windows}};

constexpr std::size_t longestCase = 4096;
std::string target;  // the running target
Case current;        // its input

void keepCurrent()
{
    const auto path = "failed-" + target;
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<const char*>(current.data()),
               static_cast<std::streamsize>(current.size()));
    (void)std::fprintf(stderr, "Failing case saved as %s\n", path.c_str());
}

void runCurrent()
{
    targets.at(target)(Input(current));
}

std::vector<Case> casesIn(const std::filesystem::path& folder)
{
    std::vector<Case> cases;
    std::vector<std::filesystem::path> paths;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) paths.push_back(entry);
    std::ranges::sort(paths);  // directory order is arbitrary
    for (const auto& path : paths) {
        std::ifstream file(path, std::ios::binary);
        cases.emplace_back(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
    }
    return cases;
}

class Mutator {
public:
    explicit Mutator(const std::vector<Case>& kept) : cases(kept) {}

    Case next()
    {
        auto made = cases.empty() || below(4) == 0 ? anything() : cases[below(cases.size())];
        for (auto changes = below(8) + 1; changes > 0; --changes) change(made);
        if (made.size() > longestCase) made.resize(longestCase);
        return made;
    }

private:
    std::size_t below(std::size_t count) { return count == 0 ? 0 : random() % count; }

    Case anything()
    {
        Case made(below(256));
        for (auto& byte : made) byte = static_cast<std::uint8_t>(random());
        return made;
    }

    // A random part of a random case.
    Case piece()
    {
        const auto source = cases.empty() ? anything() : cases[below(cases.size())];
        const auto begin = below(source.size());
        const auto size = std::min(below(64) + 1, source.size() - begin);
        const auto from = source.begin() + static_cast<std::ptrdiff_t>(begin);
        return {from, from + static_cast<std::ptrdiff_t>(size)};
    }

    void change(Case& made)
    {
        const auto at = made.begin() + static_cast<std::ptrdiff_t>(below(made.size()));
        const auto left = static_cast<std::size_t>(made.end() - at);
        const auto form = made.empty() ? 0 : below(5);
        if (form == 0) made.insert(at, static_cast<std::uint8_t>(random()));
        if (form == 1) *at = static_cast<std::uint8_t>(random());
        if (form == 2) *at ^= static_cast<std::uint8_t>(1U << below(8));
        if (form == 3) made.erase(at, at + static_cast<std::ptrdiff_t>(std::min(below(16), left)));
        if (form != 4) return;
        const auto part = piece();
        made.insert(at, part.begin(), part.end());
    }

    const std::vector<Case>& cases;
    std::mt19937_64 random{20260105};
};

int run(const std::filesystem::path& folder, int count)
{
#if defined(__SANITIZE_ADDRESS__)
    __sanitizer_set_death_callback(keepCurrent);
#endif
    (void)std::signal(SIGABRT, [](int) { keepCurrent(); });

    const auto cases = casesIn(folder);
    for (const auto& kept : cases) {
        current = kept;
        runCurrent();
    }
    Mutator mutator(cases);
    for (int i = 0; i < count; ++i) {
        current = mutator.next();
        runCurrent();
    }
    std::printf("%s: %zu corpus cases, %d mutations\n", target.c_str(), cases.size(), count);
    return 0;
}

}  // namespace

}  // namespace vorlane::fuzz

int main(int argc, char** argv)
{
    if (argc != 4 || !vorlane::fuzz::targets.contains(argv[1])) return 2;
    vorlane::fuzz::target = argv[1];
    return vorlane::fuzz::run(argv[2], std::atoi(argv[3]));
}
