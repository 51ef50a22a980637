#pragma once
// The writes of one user action (adding a pay, saving a view) committed to the payroll database
// together, so that the database commits once rather than at every statement. Whatever the action
// wrote stays written, also when it ends in an error: the batch always commits, it never undoes.
#include "data/Database.h"
#include "runtime/Trap.h"

namespace ql {

class WriteBatch {
public:
    explicit WriteBatch(Database& db) : m_db(db) {
        // Inside another batch (or the posting's own transaction) the writes already go together.
        if (m_db.isOpen() && !m_db.inTransaction()) m_mine = skipErrors([&] { m_db.beginTrans(); });
    }
    ~WriteBatch() {
        if (m_mine)
            skipErrors([&] {
                if (m_db.inTransaction()) m_db.commitTrans();
            });
    }
    WriteBatch(const WriteBatch&) = delete;
    WriteBatch& operator=(const WriteBatch&) = delete;

private:
    Database& m_db;
    bool m_mine = false;
};

} // namespace ql
