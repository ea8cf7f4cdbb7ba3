#include "../SDPNegotiator.h"
