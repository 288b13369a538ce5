#include "app/automation/TriggerApp.h"
#include "fuzz/faultOf.h"
#include "fuzz/storedListFault.h"

std::string corvane::faultOf(std::string_view data) {
    return storedListFault<TriggerList>(data);
}
