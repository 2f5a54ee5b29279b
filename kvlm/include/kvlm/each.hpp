#ifndef KVLM_EACH_HPP
#define KVLM_EACH_HPP

#include "each_systems.hpp"

#endif
