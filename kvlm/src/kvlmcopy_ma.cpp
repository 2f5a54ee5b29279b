// Copy of arrays of matrices between descriptions.
#include "kvlmcopy.h"

using namespace kvlm;
using namespace kvlm::copying;

#define ROW(name, T, S, D, Order) COPY_FUNCTION(name, COPY_MA, S, D, T, Order)

// clang-format off
//  member              element from to  order of checks
ROW(kvlmCopy_ma_32f_SS, float,  S,  S,  NSCiHo)
ROW(kvlmCopy_ma_32f_SP, float,  S,  P,  NSCiHo)
ROW(kvlmCopy_ma_32f_SL, float,  S,  LS, NSCiHo)
ROW(kvlmCopy_ma_32f_LS, float,  LS, S,  NSCiHo)
ROW(kvlmCopy_ma_32f_PS, float,  P,  S,  NSCiHo)
ROW(kvlmCopy_ma_32f_LP, float,  LS, P,  NSCiHo)
ROW(kvlmCopy_ma_32f_LL, float,  LS, LS, NSCiHo)
ROW(kvlmCopy_ma_32f_PP, float,  P,  P,  NSCiHo)
ROW(kvlmCopy_ma_32f_PL, float,  P,  LS, NSCiHo)
ROW(kvlmCopy_ma_64f_SS, double, S,  S,  NSCiHo)
ROW(kvlmCopy_ma_64f_SP, double, S,  P,  NSCiHo)
ROW(kvlmCopy_ma_64f_SL, double, S,  LS, NSCiHo)
ROW(kvlmCopy_ma_64f_LS, double, LS, S,  NSCiHo)
ROW(kvlmCopy_ma_64f_PS, double, P,  S,  NSCiHo)
ROW(kvlmCopy_ma_64f_LP, double, LS, P,  NSCiHo)
ROW(kvlmCopy_ma_64f_LL, double, LS, LS, NSCiHo)
ROW(kvlmCopy_ma_64f_PP, double, P,  P,  NSCiHo)
ROW(kvlmCopy_ma_64f_PL, double, P,  LS, NSCiHo)
// clang-format on
