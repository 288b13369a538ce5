// From Apple's open-source xnu (bsd/sys/file.h, which takes flock from fcntl.h).
#pragma once

#include <fcntl.h>
