// The same subtraction in C++, of a member of structures.
#include <cstdio>
#include <kvlm.hpp>
#include <vector>

struct Object {
    int number;
    double matrix[3][3];
};

int main()
{
    std::vector<Object> objects(100);
    const double fixed[3][3] = {{1, 2, 3}, {4, 5, 6}, {7, 8, 9}};
    for (Object &object : objects)
        object.matrix[1][2] = 10;
    const auto all = kvlm::matrices(objects, &Object::matrix);
    kvlm::check(kvlm::subtract(all, kvlm::matrix(fixed), all));
    if (all(99, 1, 2) != 4 || all(99, 2, 2) != -9)
        return 1;
    std::printf("%d in C++", all.count());
}
