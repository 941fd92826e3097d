// The process that the printers run in. There is one implementation per platform.
#pragma once

#include <boost/asio/io_context.hpp>
#include <boost/asio/signal_set.hpp>
#include <functional>

namespace virtual_printer {

// Writing to a pipe without a reader is a failed write and nothing more.
void ignoreBrokenPipes();

// By which somebody asks the process to end.
boost::asio::signal_set endingSignals(boost::asio::io_context& context);

// Ends the process well, whatever its other threads are at.
[[noreturn]] void endAtOnce();

// Calls `end` when the process that has started this one has gone.
void watchParent(boost::asio::io_context& context, std::function<void()> end);

} // namespace virtual_printer
