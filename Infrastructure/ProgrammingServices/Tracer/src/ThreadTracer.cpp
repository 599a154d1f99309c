#include "ThreadTracer.h"

void ThreadTracer::PrintMsg(TraceMsgType /*type*/, const char* /*format*/, ...) {}
