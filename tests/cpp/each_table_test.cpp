// The last word of a run: with KVLM_ACCURACY_TABLE set, what was measured goes to the file of that name.
#ifdef KVLM_HAS_LAPACK

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <iomanip>
#include <set>
#include <sstream>

#include "each_measure.h"

namespace eachtest {

std::string Table::text() const
{
    std::ostringstream out;
    out << std::setprecision(2);
    for (const std::string &name : names) {
        std::set<int> orders;
        for (const auto &[key, value] : titles.at(name))
            orders.insert(key.second);
        out << "\n### " << name << "\n\n| |";
        for (int order : orders)
            out << " " << order << " |";
        out << "\n|---|";
        for (std::size_t k = 0; k < orders.size(); ++k)
            out << "---:|";
        for (const std::string &row : rows.at(name)) {
            out << "\n| " << row << " |";
            for (int order : orders) {
                const auto cell = titles.at(name).find({row, order});
                if (cell != titles.at(name).end())
                    out << " " << cell->second;
                out << " |";
            }
        }
        out << "\n";
    }
    return out.str();
}

namespace {

class WriteTable : public testing::Environment {
    void TearDown() override
    {
        if (const char *name = std::getenv("KVLM_ACCURACY_TABLE"))
            std::ofstream(name) << Table::all().text();
    }
};
const auto *const table = testing::AddGlobalTestEnvironment(new WriteTable);

} // namespace
} // namespace eachtest

#endif
