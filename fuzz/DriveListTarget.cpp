#include "app/awake/DriveItem.h"
#include "fuzz/faultOf.h"
#include "fuzz/storedListFault.h"

std::string corvane::faultOf(std::string_view data) {
    return storedListFault<DriveList>(data);
}
