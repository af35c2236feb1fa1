#pragma once

namespace Host::StandardStreams {

/// Whoever reads the log may go, or stop reading: from now on the program neither ends by SIGPIPE
/// nor waits for room in a pipe or a terminal on stderr; what does not fit there is dropped. Before
/// any thread is started.
void outliveReaders();

} // namespace Host::StandardStreams
