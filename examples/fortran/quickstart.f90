! quickstart.f90: the library from Fortran through the module zvl.
!
!   gfortran quickstart.f90 $(pkg-config --cflags --libs zvl)
program quickstart
  use zvl
  use, intrinsic :: iso_c_binding, only: c_int, c_double
  implicit none
  integer(c_int) :: n, old
  real(c_double) :: a(6), b(6), r(6), y(6), z(6), e

  print '(a, i0, a, i0, a, i0)', 'zvl ', ZVL_VERSION_MAJOR, '.', ZVL_VERSION_MINOR, '.', &
    ZVL_VERSION_PATCH
  n = 6
  a = [0.5d0, 1d0, 2d0, 4d0, 8d0, 16d0]
  b = [2d0, 2d0, 0.5d0, 0.5d0, -1d0, 3d0]

  ! Counts and arrays by reference, as for any Fortran routine.
  call VDEXP(n, a, r)
  print '(a, 6es24.16)', 'exp:       ', r
  call VDPOW(n, a, b, r)
  print '(a, 6es24.16)', 'pow:       ', r
  e = 3d0
  call VDPOWX(n, a, e, r)
  print '(a, 6es24.16)', 'powx, 3:   ', r
  call VDMODF(n, b, y, z)
  print '(a, 6f6.2)', 'modf of b, integer parts: ', y
  print '(a, 6f6.2)', 'modf of b, fractions:     ', z

  ! _Idx forms: indices by value, counting elements from 0. Here the last
  ! four elements of a go to the first four of r.
  r = 0
  call VDLN_Idx(4, a, 2, r, 0)
  print '(a, 6es24.16)', 'ln, a(3:): ', r

  ! The accuracy mode of this thread: EP for this call, then back to HA.
  old = ZVLSETMODE(ZVL_EP)
  call VDEXP(n, a, r)
  print '(a, 6es24.16)', 'exp, EP:   ', r
  old = ZVLSETMODE(ZVL_HA)
  print '(a, z0)', 'mode word: ', ZVLGETMODE()

  print '(a, i0)', 'threads a call may use: ', ZEL_Domain_Get_Max_Threads(ZEL_ZVL)
end program quickstart
