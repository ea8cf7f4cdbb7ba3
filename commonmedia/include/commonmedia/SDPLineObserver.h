#include "../SDPLineObserver.h"
