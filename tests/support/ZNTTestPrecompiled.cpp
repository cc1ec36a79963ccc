// Holds the precompiled GoogleTest headers; its main is GoogleTest's.
