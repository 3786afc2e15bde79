// GNUstep includes this header and needs nothing of it here.
