#pragma once

// Apple's open-source IOKit library (IOKitUser), ps/IOPSKeys.h: the entries of a source's description.
#define kIOPSCurrentCapacityKey "Current Capacity"
#define kIOPSMaxCapacityKey "Max Capacity"
#define kIOPSPowerSourceStateKey "Power Source State"
#define kIOPSIsChargingKey "Is Charging"

// Apple's open-source IOKit library (IOKitUser), ps/IOPSKeys.h: states of a source.
#define kIOPSACPowerValue "AC Power"
