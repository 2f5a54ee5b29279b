/* Subtracts one matrix from an array of them, long enough for a team, and checks every element. */
#include <kvlcore.h>
#include <kvlm.h>
#include <stdio.h>

enum { order = 3, elements = order * order, count = 20000 };

static double objects[count][elements], results[count][elements];

int main(void)
{
    const double fixed[elements] = {1, 2, 3, 4, 5, 6, 7, 8, 9};
    const int elem = sizeof(double), row = order * elem, obj = elements * elem;
    KvlStatus status;
    int i, k;

    for (i = 0; i < count; i++)
        for (k = 0; k < elements; k++)
            objects[i][k] = i + 10 * k;
    kvlSetNumThreads(2);
    status =
        kvlmSub_mam_64f(objects[0], obj, row, elem, fixed, row, elem, results[0], obj, row, elem, order, order, count);
    if (status != kvlOk)
        return 1;
    for (i = 0; i < count; i++)
        for (k = 0; k < elements; k++)
            if (results[i][k] != i + 10 * k - fixed[k])
                return 2;
    if (kvlmSub_mam_64f(objects[0], obj, row, elem, fixed, row, elem, results[0], obj, row, elem, order, order, 0) !=
        kvlErrCount)
        return 3;
    printf("%s %s: %d matrices subtracted\n", kvlmGetLibVersion()->libraryName, kvlmGetLibVersion()->versionText,
           count);
    return 0;
}
