// The same, with what every test includes.
#pragma once

#include <gtest/gtest.h>

#include "core.h"
