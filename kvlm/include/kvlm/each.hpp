#ifndef KVLM_EACH_HPP
#define KVLM_EACH_HPP

#include "each_general.hpp"
#include "each_symmetric.hpp"
#include "each_systems.hpp"

#endif
