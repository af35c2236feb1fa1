#pragma once

namespace Station::StandardStreams {

/// Whoever reads the log may go, or stop reading: from now on the station neither ends by SIGPIPE
/// nor waits for room in a pipe or a terminal on stderr; what does not fit there is dropped. Before
/// any thread is started.
void outliveReaders();

} // namespace Station::StandardStreams
