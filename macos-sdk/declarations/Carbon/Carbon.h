#pragma once

#include <Carbon/CarbonEvents.h>
#include <Carbon/CarbonEventsCore.h>
#include <Carbon/Events.h>
