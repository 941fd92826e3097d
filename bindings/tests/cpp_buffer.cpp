// Does not compile: a session does not call what fills a buffer.
#include "telvofm.hpp"

telvofm::Outcome readJournal(telvofm::Session& session, char* buffer, int size)
{
    return session.call("getJournal", getJournal, session.device(), buffer, size);
}
