#pragma once

/// Whose parameters a file holds.
enum t_PersistenceMode : int {
    PERSISTENCE_ALL_USERS = 0,
    PERSISTENCE_CURRENT_USER = 1,
};
