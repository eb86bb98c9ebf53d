// vorlane-report prints, for bug reports, what the kernel says about the battery and what Vorlane
// reads from it. Uses no other source.
#include <algorithm>
#include <exception>
#include <iostream>
#include <string>
#include <utility>
#include <vector>

#include "platform/linux/power/PowerSupplyFolder.h"
#include "platform/linux/report/ReportJson.h"

namespace {

using namespace vorlane::platform;

int report(const std::vector<std::string>& arguments)
{
    if (arguments.size() > 1 || (!arguments.empty() && arguments.front().starts_with('-'))) {
        std::cerr << "Usage: vorlane-report [folder of power supplies]\n";
        return 2;
    }
    const std::string folder = arguments.empty() ? kernelPowerSupplies : arguments.front();
    auto supplies = readPowerSupplies(folder);
    if (!supplies && !arguments.empty()) {
        std::cerr << "vorlane-report: cannot read the folder " << folder << '\n';
        return 1;
    }

    std::cout << reportJson(std::move(supplies).value_or({})) << '\n' << std::flush;
    return std::cout ? 0 : 1;
}

}  // namespace

int main(int count, char** words)
{
    try {
        return report({words + std::min(count, 1), words + count});
    } catch (const std::exception& error) {
        std::cerr << "vorlane-report: " << error.what() << '\n';
        return 1;
    }
}
