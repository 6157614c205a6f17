#pragma once

#include <functional>
#include <string>

// Makes the file at `path` anew: calls write(part) to write a file beside it and renames that to `path`, so that nobody
// ever sees half a file and a failure leaves what was there. Throws what `write` throws, and std::runtime_error with
// the path in the message when something that is no regular file stands there or the file cannot be renamed.
void replaceFile(const std::string& path, const std::function<void(const std::string& part)>& write);
