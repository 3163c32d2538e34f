#include "benchmarks/support/Comparison.hpp"

#include <cstddef>

#include "benchmarks/support/Markdown.hpp"
#include "benchmarks/support/Statistics.hpp"

namespace vantrel::bench {

double Figures::p50() const {
    return median(medians);
}

double Figures::p99() const {
    return median(tails);
}

std::string Figures::lostText() const {
    return groupedText(lost) + " of " + groupedText(presses);
}

std::vector<Figures> compare(const std::vector<Contender>& contenders, int rounds) {
    std::vector<Figures> figures(contenders.size());
    for (std::size_t index = 0; index < contenders.size(); ++index) {
        figures[index].name = contenders[index].name;
    }
    for (int round = 0; round < rounds; ++round) {
        for (std::size_t turn = 0; turn < contenders.size(); ++turn) {
            const std::size_t index = (turn + static_cast<std::size_t>(round)) % contenders.size();
            const PressTimes times = contenders[index].measure();
            Figures& its = figures[index];
            its.medians.push_back(times.percentile(0.5));
            its.tails.push_back(times.percentile(0.99));
            its.presses += times.presses();
            its.lost += times.lost;
        }
    }
    return figures;
}

void printComparison(const std::string& what, const std::string& first, const std::vector<Figures>& figures) {
    printTableHead({what, "p50", "p99", "against " + first + ", p50", "p99", "lost"});
    for (const Figures& its : figures) {
        printTableRow({its.name, timeText(its.p50()), timeText(its.p99()),
                       numberText(its.p50() / figures.front().p50(), 2),
                       numberText(its.p99() / figures.front().p99(), 2), its.lostText()});
    }
}

}  // namespace vantrel::bench
