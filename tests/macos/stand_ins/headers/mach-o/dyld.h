#pragma once

extern "C" int _NSGetExecutablePath(char* buffer, unsigned* size);
