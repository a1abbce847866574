# What people type. The build itself is CMake's: see CMakePresets.json.

# make run SONG=path plays another song than the demo.
SONG ?=
export SONG

# make soak SEED=number repeats a session.
SEED ?=

.PHONY: run test soak bench package pictures format lint clean

run:
	@scripts/run

test:
	@scripts/setup
	cmake --preset debug
	cmake --build --preset debug
	ctest --preset debug -j 2

soak:
	cmake --preset release
	cmake --build --preset release --target sonnel_soak
	build/release/bin/sonnel_soak 120 $(SEED)

bench:
	@bench/run

package:
	@scripts/package

pictures:
	@scripts/pictures

format:
	@scripts/format

lint:
	@scripts/lint

clean:
	rm -rf build
