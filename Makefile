# make run   installs what is missing, builds, and starts Quench (or, with no display, calculates
#            the bundled example project through the command line and writes its report).
# make test  installs, builds, and runs every test, then again with the sanitizers.
# make coverage  builds the engine's suites with gcov, runs them, and lists the lines of solver/
#            they leave unrun (lcov summary in build-coverage/solver.info, a report per file).
# make package  builds the Debian package (install it with apt-get install ./build/quench_*.deb).
JOBS ?= $(shell nproc 2>/dev/null || echo 2)
BUILD ?= build
SANITIZE_BUILD ?= build-sanitize
COVERAGE_BUILD ?= build-coverage
EXAMPLE ?= examples/branch_line.qnw
OUT ?= out

.PHONY: all deps build run test test-fast test-sanitize coverage bench format package clean

all: build

deps:
	@./scripts/install-deps.sh

build: deps
	cmake -S . -B $(BUILD) -DCMAKE_BUILD_TYPE=RelWithDebInfo -DQUENCH_WERROR=ON
	cmake --build $(BUILD) -j $(JOBS)

run: build
	@./scripts/run.sh $(BUILD) $(EXAMPLE) $(OUT)

test: test-fast test-sanitize

test-fast: build
	QT_QPA_PLATFORM=offscreen ctest --test-dir $(BUILD) --output-on-failure -j $(JOBS)

test-sanitize: deps
	cmake -S . -B $(SANITIZE_BUILD) -DCMAKE_BUILD_TYPE=Debug -DQUENCH_SANITIZE=ON \
	    -DQUENCH_GUI=OFF -DQUENCH_BENCH=OFF -DQUENCH_WERROR=ON
	cmake --build $(SANITIZE_BUILD) -j $(JOBS)
	ASAN_OPTIONS=detect_leaks=1 UBSAN_OPTIONS=print_stacktrace=1 \
	    ctest --test-dir $(SANITIZE_BUILD) --output-on-failure -j $(JOBS) -E '^format$$'

coverage: deps
	cmake -S . -B $(COVERAGE_BUILD) -DCMAKE_BUILD_TYPE=Debug -DQUENCH_COVERAGE=ON \
	    -DQUENCH_GUI=OFF -DQUENCH_BENCH=OFF
	cmake --build $(COVERAGE_BUILD) -j $(JOBS) --target solver_tests calc_tests
	lcov --quiet --zerocounters --directory $(COVERAGE_BUILD)
	$(COVERAGE_BUILD)/bin/solver_tests --gtest_brief=1
	$(COVERAGE_BUILD)/bin/calc_tests --gtest_brief=1
	lcov --quiet --capture --directory $(COVERAGE_BUILD) --output-file $(COVERAGE_BUILD)/all.info
	lcov --quiet --extract $(COVERAGE_BUILD)/all.info '$(CURDIR)/solver/*' \
	    --output-file $(COVERAGE_BUILD)/solver.info
	lcov --list $(COVERAGE_BUILD)/solver.info
	./scripts/uncovered-lines.sh $(COVERAGE_BUILD)/solver.info

bench: build
	$(BUILD)/bin/quench_bench

# The Debian package quench_VERSION_ARCH.deb, in the build directory.
package: build
	cmake --build $(BUILD) --target package

format:
	git ls-files '*.cpp' '*.h' | xargs clang-format -i

clean:
	rm -rf $(BUILD) $(SANITIZE_BUILD) $(COVERAGE_BUILD) $(OUT)
