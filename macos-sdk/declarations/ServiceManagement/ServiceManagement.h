// What the project uses of ServiceManagement.
#pragma once

#import <ServiceManagement/SMAppService.h>
