#pragma once

#include <dispatch/object.h>
#include <dispatch/queue.h>
#include <dispatch/source.h>
#include <dispatch/time.h>
