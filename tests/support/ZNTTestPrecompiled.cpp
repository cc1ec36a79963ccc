// Holds the precompiled GoogleTest headers.
