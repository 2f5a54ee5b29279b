// The last word of a run: with KVLM_ACCURACY_TABLE set, what was measured goes to the file of that name.
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

const char *const preface = R"(# Accuracy of kvlm::each

The worst of what the tests measured, by kind of matrix and order, beside LAPACK on the same matrices. The tests write
this file, with as many times their usual number of matrices as KVLM_ACCURACY_COUNTS says:

```sh
KVLM_ACCURACY_COUNTS=4 KVLM_ACCURACY_TABLE=docs/accuracy.md cpp_tests --gtest_filter='Each*'
```

All numbers are in units of n*epsilon, and of the norm of the matrix where they are no ratios already; the norm is that
of Frobenius. Matrices are rounded to the type before anything is computed from them; residuals are formed in double.
The kinds are those of the tests. A "plane of 10 cm" is the covariance of points in a plane, in metres: singular, and
small.

What these tables say, in short:

- symmetric eigenproblems: residuals, orthogonality and values are within 4 units, at any size, with LAPACK's syev;
- general eigenproblems: residuals are within 4 units, those of LAPACK's geev mostly within 3; where it balances a
  matrix its residuals can be much smaller;
- solutions have backward errors within 4 units, with gesv. The inverse without conditions is by cofactors, whose error
  grows with the square of the condition: its rows of ill-conditioned kinds tell. With conditions, or where |A|*|A^-1|
  exceeds 1/(16*epsilon), it does not; rows and columns are scaled then, which is not LAPACK's way, and differs from it
  where their sizes differ widely.
)";

class WriteTable : public testing::Environment {
    void TearDown() override
    {
        if (const char *name = std::getenv("KVLM_ACCURACY_TABLE"))
            std::ofstream(name) << preface << Table::all().text();
    }
};
const auto *const table = testing::AddGlobalTestEnvironment(new WriteTable);

} // namespace
} // namespace eachtest
