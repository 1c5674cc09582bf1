#include "rastgl/picture.h"
