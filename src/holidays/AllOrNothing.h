#pragma once
// The writes of one Save of a holiday screen: all of them or, when one fails, none (the error goes on
// to the caller).
#include "data/Database.h"

namespace ql::holidays {

template <class F> void AllOrNothing(Database& db, F&& writes) {
    db.beginTrans();
    try {
        writes();
        db.commitTrans();
    } catch (...) {
        if (db.inTransaction()) db.rollback();
        throw;
    }
}

} // namespace ql::holidays
