// The settings and libraries that go with a scaled project.
#ifndef TALLY_BENCH_SCALED_SERVICES_H_
#define TALLY_BENCH_SCALED_SERVICES_H_

/// Puts the settings, marks and chapters of the example project in force, from memory.
void InstallScaledServices();

/// Brings the services back that read them from the project's database.
void InstallPortableServices();

#endif  // TALLY_BENCH_SCALED_SERVICES_H_
