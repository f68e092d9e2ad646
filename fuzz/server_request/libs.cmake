set(fuzz_libs telor-plant)
