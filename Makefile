# The front end of the build. Each target installs the packages that it needs (packaging/install-dependencies.sh).
install_dependencies = ./packaging/install-dependencies.sh
build = cmake --preset $(1) --log-level=WARNING && cmake --build --preset $(1)
# A separate build in build/<name>: name, settings, targets.
build_apart = cmake -G Ninja -S . -B build/$(1) $(2) --log-level=WARNING && cmake --build build/$(1) --target $(3)
by_clang = -DCMAKE_CXX_COMPILER=clang++-19
counted = $(by_clang) -DTANDEM_TRIM_OBJCXX=/usr/bin/clang++-19 -DCMAKE_BUILD_TYPE=Debug -DTANDEM_TRIM_COVERAGE=branches
core_only = $(by_clang) -DCMAKE_BUILD_TYPE=Debug -DTANDEM_TRIM_COVERAGE=conditions -DTANDEM_TRIM_GTK=OFF -DTANDEM_TRIM_APPKIT=OFF
without_tests = $(by_clang) -DTANDEM_TRIM_TESTS=OFF -DTANDEM_TRIM_GTK=OFF
fuzz_programs = $(call build_apart,fuzz,$(without_tests) -DTANDEM_TRIM_FUZZ=ON,fuzz/all) && \
  $(call build_apart,fuzz-quick,$(without_tests) -DTANDEM_TRIM_FUZZ=quick,fuzz/all)
sources = $(shell git ls-files '*.cpp' '*.hpp' '*.mm' '*.h' '*.c')
tests_of_core = conformance/conformance_memory_test model/tandemtrim_model_test model/tandemtrim_model_release_test \
  adapters/linux/tandemtrim_linux_test adapters/memory/tandemtrim_memory_test platform/tandemtrim_values_test \
  plugin/tandemtrim_memory_shortage_test plugin/tandemtrim_plugin_test sequences/tandemtrim_sequences_test \
  view/tandemtrim_margin_entry_test view/tandemtrim_view_test
# A tidy.cpp includes all sources of a folder; see cmake/tidy.cmake.
checked_by_tidy = $(patsubst %,build/release/%/tidy.cpp,adapters/gtk host host/dialog host/notifier host/portal host/preview) \
  $(filter-out adapters/gtk/%,$(shell git ls-files 'adapters/*.cpp' 'model/*.cpp' 'platform/*.cpp' 'plugin/*.cpp' 'view/*.cpp'))
# A macro's argument that is the name of a method cannot be in parentheses.
not_of_methods = -bugprone-macro-parentheses

.PHONY: run pictures test check fresh package package-trial sanitize soak race memcheck coverage lint format install mcdc fuzz bench mutants \
  mutants-all macho macho-package mac mac-clean

run: ## print a sample document on a private print server and show what the printer's filter received
	$(install_dependencies) run
	$(call build,release)
	/usr/bin/python3 demo/run.py --build build/release

pictures: ## retake the pictures of the dialog in docs/
	$(install_dependencies) run
	$(call build,release)
	tests/support/on_own_screen.py TANDEM_TRIM_BUILD=$(CURDIR)/build/release /usr/bin/python3 demo/pictures.py

test: ## build and run all tests
	$(install_dependencies) test
	$(call build,test)
	ctest --preset test

check: ## build and run the quick tests that need no screen
	$(install_dependencies) test
	cmake --preset test --log-level=WARNING
	cmake --build --preset check
	ctest --preset check

fresh: ## make run and make test for this commit on a bare Debian 12, as root and as an ordinary user; takes half an hour
	$(install_dependencies) fresh
	tests/fresh_machine.sh root 'make run && make test' user 'make run && make test'

bench: ## measure speed and memory, most of it beside a peer; fails if a goal is missed, except those that docs/performance.md explains; takes ten minutes
	$(install_dependencies) bench
	cmake --preset release --log-level=WARNING -DTANDEM_TRIM_BENCH=ON
	cmake --build --preset release
	/usr/bin/python3 bench/run.py --build build/release

sanitize: ## run the tests under AddressSanitizer and UndefinedBehaviorSanitizer; TESTS='-R ...' or '-E ...' selects some
	$(install_dependencies) test
	$(call build,sanitize)
	ctest --preset sanitize $(TESTS)

soak: ## run the long tests for HOURS (1) and add up what they try; SOAK='jobs cuts' selects some of those in tests/soak.py
	$(install_dependencies) test
	$(call build,test)
	$(if $(or $(findstring inputs,$(SOAK)),$(if $(SOAK),,all)),$(install_dependencies) fuzz && $(fuzz_programs))
	tests/soak.py $(or $(HOURS),1) $(SOAK)

race: ## run the dialog's background work under ThreadSanitizer
	$(install_dependencies) test
	$(call build_apart,race,-DCMAKE_BUILD_TYPE=Debug -DTANDEM_TRIM_SANITIZE=thread -DTANDEM_TRIM_APPKIT=OFF,tandemtrim_dialog_tests)
	TSAN_OPTIONS=ignore_noninstrumented_modules=1:halt_on_error=1 ctest --test-dir build/race --output-on-failure --timeout 3600 -j 2 -R '^e2e: (dialog|print backend|hostile programs|failing prints|many prints|notifier)'

memcheck: ## run the tests of the core under valgrind
	$(install_dependencies) memcheck
	$(call build,test)
	printf '%s\n' $(tests_of_core) | TANDEM_TRIM_SEQUENCES=1000 xargs -P 2 -I '{}' valgrind --quiet --error-exitcode=1 \
	  --soname-synonyms=somalloc=nouserintercepts --leak-check=full --errors-for-leak-kinds=definite,indirect,possible build/release/tests/'{}' --gtest_brief=1

coverage: ## measure the lines and branches that the tests cover, by folder; fails where a folder misses its bound; takes half an hour
	$(install_dependencies) coverage
	$(call build_apart,coverage,$(counted),all)
	tests/coverage.py begin
	ctest --test-dir build/coverage --output-on-failure --timeout 1800 -j 3 -E 'packages|volume|many prints|\((c|arabic)\)'
	tests/coverage.py

mcdc: ## report the modified condition/decision coverage (MC/DC) of the core and adapters/linux
	$(install_dependencies) mcdc
	$(call build_apart,mcdc,$(core_only),tests/all)
	tests/mcdc.sh

mutants: ## check that the tests notice MUTANTS (300) small changes of the sources, different ones each day; takes hours
	$(install_dependencies) mutants
	/usr/bin/python3 tests/mutants/run.py --sample $(or $(MUTANTS),300)

mutants-all: ## the same for every small change; takes days
	$(install_dependencies) mutants
	/usr/bin/python3 tests/mutants/run.py

fuzz: ## try random inputs with each target for SECONDS (60), and check its properties
	$(install_dependencies) fuzz
	$(fuzz_programs)
	fuzz/run.sh $(or $(SECONDS),60)

macho: ## build and test the bundle for macOS, for both processors, with stand-ins for Apple's SDK, in build/macho; see docs/macos.md
	$(install_dependencies) macho
	cmake/macos/build.sh
	cd tests/macho && ../support/surroundings.py TANDEM_TRIM_BUILD=$(CURDIR)/build/macho /usr/bin/python3 -m unittest

macho-package: ## pack the same bundle for Macs without Xcode, with scripts that install and check it
	$(install_dependencies) macho
	cmake/macos/build.sh
	packaging/macos/archive/archive.sh

mac: ## on a Mac: build and install the bundle, try it with a queue and a small application, and report; see docs/macos.md
	packaging/macos/trial/trial.sh

mac-clean: ## on a Mac: remove everything that make mac made and installed
	packaging/macos/trial/trial.sh clean

package: ## build the Debian packages, in build/release/package, and run their tests
	$(install_dependencies) package
	$(call build,release)
	cd build/release && rm -f package/*.deb && umask 022 && cpack
	cd tests/e2e && ../support/surroundings.py TANDEM_TRIM_BUILD=$(CURDIR)/build/release /usr/bin/python3 -m unittest test_packages

package-trial: package ## try the packages in a bare system with Debian's archives: install, print, upgrade, remove; takes minutes
	$(install_dependencies) trial
	packaging/trial.sh build/release/package

lint: ## check the formatting, clang-tidy, the man pages and the scripts
	$(install_dependencies) lint
	clang-format --dry-run -Werror $(sources)
	cmake --preset test --log-level=WARNING
	printf '%s\n' $(checked_by_tidy) | xargs -P 2 -n 1 clang-tidy --quiet -p build/release
	clang-tidy --quiet -p build/release --header-filter=/adapters/appkit/ --checks=$(not_of_methods) build/release/adapters/appkit/tidy.mm
	desktop-file-validate packaging/desktop/*.desktop
	appstreamcli validate --no-net build/release/packaging/*.metainfo.xml
	mandoc -Tlint docs/tandem-trim.1 docs/tandem-trim-portal.8
	pyflakes3 $$(git ls-files '*.py')
	git ls-files '*.sh' '*.bash' .ci/run | xargs -n 1 bash -n

format: ## apply the formatting
	$(install_dependencies) lint
	clang-format -i $(sources)

install: ## install under PREFIX (default /usr/local), inside DESTDIR if given
	$(install_dependencies) run
	cmake --preset release --log-level=WARNING -DCMAKE_INSTALL_PREFIX=$(or $(PREFIX),/usr/local)
	cmake --build --preset release
	cmake --install build/release
