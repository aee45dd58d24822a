! zvl.f90 - Fortran interfaces of the ZVL vector mathematics library.
! Written by tools/bindings/generate.py from tools/bindings/functions.txt
! and include/zvl.h; do not edit.
!
! use zvl gives every exported name with its C binding: the functions take
! the count and arrays by reference (call VDEXP(n, a, r)); the _Idx forms
! take each index by value, counting elements from 0, after its array
! (call VDEXP_Idx(n, a, 10, r, 0) works on a(11:) into r(1:)). Mode and
! status constants are those of zvl.h. Link with -lzvl.
module zvl
  use, intrinsic :: iso_c_binding, only: c_int, c_double, c_double_complex
  implicit none

  ! The version of the library these interfaces belong to.
  integer(c_int), parameter :: ZVL_VERSION_MAJOR = 0
  integer(c_int), parameter :: ZVL_VERSION_MINOR = 1
  integer(c_int), parameter :: ZVL_VERSION_PATCH = 0

  ! Mode word fields, statuses and thread domains (zvl.h).
  integer(c_int), parameter :: ZVL_ACCURACY_MASK = 15
  integer(c_int), parameter :: ZVL_LA = 1
  integer(c_int), parameter :: ZVL_HA = 2
  integer(c_int), parameter :: ZVL_EP = 3
  integer(c_int), parameter :: ZVL_ERRMODE_MASK = 65280
  integer(c_int), parameter :: ZVL_ERRMODE_IGNORE = 256
  integer(c_int), parameter :: ZVL_ERRMODE_ERRNO = 512
  integer(c_int), parameter :: ZVL_ERRMODE_STDOUT = 1024
  integer(c_int), parameter :: ZVL_ERRMODE_EXCEPT = 2048
  integer(c_int), parameter :: ZVL_ERRMODE_CALLBACK = 4096
  integer(c_int), parameter :: ZVL_ERRMODE_DEFAULT = 6656
  integer(c_int), parameter :: ZVL_FPMODE_MASK = 196608
  integer(c_int), parameter :: ZVL_MODE_DEFAULT = 6658
  integer(c_int), parameter :: ZVL_STATUS_BADMEM = -2
  integer(c_int), parameter :: ZVL_STATUS_BADSIZE = -1
  integer(c_int), parameter :: ZVL_STATUS_OK = 0
  integer(c_int), parameter :: ZVL_STATUS_ERRDOM = 1
  integer(c_int), parameter :: ZVL_STATUS_SING = 2
  integer(c_int), parameter :: ZVL_STATUS_OVERFLOW = 3
  integer(c_int), parameter :: ZVL_STATUS_UNDERFLOW = 4
  integer(c_int), parameter :: ZEL_ALL = 0
  integer(c_int), parameter :: ZEL_BLAS = 1
  integer(c_int), parameter :: ZEL_FFT = 2
  integer(c_int), parameter :: ZEL_ZVL = 3

  interface
    ! Mode word of the calling thread.
    function ZVLGETMODE() bind(C, name="ZVLGETMODE")
      import :: c_int
      integer(c_int) :: ZVLGETMODE
    end function ZVLGETMODE
    function ZVLSETMODE(mode) bind(C, name="ZVLSETMODE")
      import :: c_int
      integer(c_int), intent(in) :: mode
      integer(c_int) :: ZVLSETMODE
    end function ZVLSETMODE
    ! Thread controls, process-wide.
    function ZEL_Get_Max_Threads() bind(C, name="ZEL_Get_Max_Threads")
      import :: c_int
      integer(c_int) :: ZEL_Get_Max_Threads
    end function ZEL_Get_Max_Threads
    subroutine ZEL_Set_Num_Threads(n) bind(C, name="ZEL_Set_Num_Threads")
      import :: c_int
      integer(c_int), value :: n
    end subroutine ZEL_Set_Num_Threads
    function ZEL_Domain_Get_Max_Threads(domain) bind(C, name="ZEL_Domain_Get_Max_Threads")
      import :: c_int
      integer(c_int), value :: domain
      integer(c_int) :: ZEL_Domain_Get_Max_Threads
    end function ZEL_Domain_Get_Max_Threads
    function ZEL_Domain_Set_Num_Threads(n, domain) bind(C, name="ZEL_Domain_Set_Num_Threads")
      import :: c_int
      integer(c_int), value :: n
      integer(c_int), value :: domain
      integer(c_int) :: ZEL_Domain_Set_Num_Threads
    end function ZEL_Domain_Set_Num_Threads
    function ZEL_Get_Dynamic() bind(C, name="ZEL_Get_Dynamic")
      import :: c_int
      integer(c_int) :: ZEL_Get_Dynamic
    end function ZEL_Get_Dynamic
    subroutine ZEL_Set_Dynamic(flag) bind(C, name="ZEL_Set_Dynamic")
      import :: c_int
      integer(c_int), value :: flag
    end subroutine ZEL_Set_Dynamic
    ! Reciprocal and division
    subroutine VDINV(n, a, r) bind(C, name="VDINV")
      import :: c_int, c_double
      integer(c_int), intent(in) :: n
      real(c_double), intent(in) :: a(*)
      real(c_double), intent(inout) :: r(*)
    end subroutine VDINV
    subroutine VDINV_Idx(n, a, ia, r, ir) bind(C, name="VDINV_Idx")
      import :: c_int, c_double
      integer(c_int), intent(in) :: n
      real(c_double), intent(in) :: a(*)
      integer(c_int), value :: ia
      real(c_double), intent(inout) :: r(*)
      integer(c_int), value :: ir
    end subroutine VDINV_Idx
    subroutine VDDIV(n, a, b, r) bind(C, name="VDDIV")
      import :: c_int, c_double
      integer(c_int), intent(in) :: n
      real(c_double), intent(in) :: a(*)
      real(c_double), intent(in) :: b(*)
      real(c_double), intent(inout) :: r(*)
    end subroutine VDDIV
    subroutine VDDIV_Idx(n, a, ia, b, ib, r, ir) bind(C, name="VDDIV_Idx")
      import :: c_int, c_double
      integer(c_int), intent(in) :: n
      real(c_double), intent(in) :: a(*)
      integer(c_int), value :: ia
      real(c_double), intent(in) :: b(*)
      integer(c_int), value :: ib
      real(c_double), intent(inout) :: r(*)
      integer(c_int), value :: ir
    end subroutine VDDIV_Idx
    ! Roots
    subroutine VDSQRT(n, a, r) bind(C, name="VDSQRT")
      import :: c_int, c_double
      integer(c_int), intent(in) :: n
      real(c_double), intent(in) :: a(*)
      real(c_double), intent(inout) :: r(*)
    end subroutine VDSQRT
    subroutine VDSQRT_Idx(n, a, ia, r, ir) bind(C, name="VDSQRT_Idx")
      import :: c_int, c_double
      integer(c_int), intent(in) :: n
      real(c_double), intent(in) :: a(*)
      integer(c_int), value :: ia
      real(c_double), intent(inout) :: r(*)
      integer(c_int), value :: ir
    end subroutine VDSQRT_Idx
    subroutine VDINVSQRT(n, a, r) bind(C, name="VDINVSQRT")
      import :: c_int, c_double
      integer(c_int), intent(in) :: n
      real(c_double), intent(in) :: a(*)
      real(c_double), intent(inout) :: r(*)
    end subroutine VDINVSQRT
    subroutine VDINVSQRT_Idx(n, a, ia, r, ir) bind(C, name="VDINVSQRT_Idx")
      import :: c_int, c_double
      integer(c_int), intent(in) :: n
      real(c_double), intent(in) :: a(*)
      integer(c_int), value :: ia
      real(c_double), intent(inout) :: r(*)
      integer(c_int), value :: ir
    end subroutine VDINVSQRT_Idx
    subroutine VDCBRT(n, a, r) bind(C, name="VDCBRT")
      import :: c_int, c_double
      integer(c_int), intent(in) :: n
      real(c_double), intent(in) :: a(*)
      real(c_double), intent(inout) :: r(*)
    end subroutine VDCBRT
    subroutine VDCBRT_Idx(n, a, ia, r, ir) bind(C, name="VDCBRT_Idx")
      import :: c_int, c_double
      integer(c_int), intent(in) :: n
      real(c_double), intent(in) :: a(*)
      integer(c_int), value :: ia
      real(c_double), intent(inout) :: r(*)
      integer(c_int), value :: ir
    end subroutine VDCBRT_Idx
    subroutine VDINVCBRT(n, a, r) bind(C, name="VDINVCBRT")
      import :: c_int, c_double
      integer(c_int), intent(in) :: n
      real(c_double), intent(in) :: a(*)
      real(c_double), intent(inout) :: r(*)
    end subroutine VDINVCBRT
    subroutine VDINVCBRT_Idx(n, a, ia, r, ir) bind(C, name="VDINVCBRT_Idx")
      import :: c_int, c_double
      integer(c_int), intent(in) :: n
      real(c_double), intent(in) :: a(*)
      integer(c_int), value :: ia
      real(c_double), intent(inout) :: r(*)
      integer(c_int), value :: ir
    end subroutine VDINVCBRT_Idx
    ! Exponential and logarithms
    subroutine VDEXP(n, a, r) bind(C, name="VDEXP")
      import :: c_int, c_double
      integer(c_int), intent(in) :: n
      real(c_double), intent(in) :: a(*)
      real(c_double), intent(inout) :: r(*)
    end subroutine VDEXP
    subroutine VDEXP_Idx(n, a, ia, r, ir) bind(C, name="VDEXP_Idx")
      import :: c_int, c_double
      integer(c_int), intent(in) :: n
      real(c_double), intent(in) :: a(*)
      integer(c_int), value :: ia
      real(c_double), intent(inout) :: r(*)
      integer(c_int), value :: ir
    end subroutine VDEXP_Idx
    subroutine VDLN(n, a, r) bind(C, name="VDLN")
      import :: c_int, c_double
      integer(c_int), intent(in) :: n
      real(c_double), intent(in) :: a(*)
      real(c_double), intent(inout) :: r(*)
    end subroutine VDLN
    subroutine VDLN_Idx(n, a, ia, r, ir) bind(C, name="VDLN_Idx")
      import :: c_int, c_double
      integer(c_int), intent(in) :: n
      real(c_double), intent(in) :: a(*)
      integer(c_int), value :: ia
      real(c_double), intent(inout) :: r(*)
      integer(c_int), value :: ir
    end subroutine VDLN_Idx
    subroutine VDLOG10(n, a, r) bind(C, name="VDLOG10")
      import :: c_int, c_double
      integer(c_int), intent(in) :: n
      real(c_double), intent(in) :: a(*)
      real(c_double), intent(inout) :: r(*)
    end subroutine VDLOG10
    subroutine VDLOG10_Idx(n, a, ia, r, ir) bind(C, name="VDLOG10_Idx")
      import :: c_int, c_double
      integer(c_int), intent(in) :: n
      real(c_double), intent(in) :: a(*)
      integer(c_int), value :: ia
      real(c_double), intent(inout) :: r(*)
      integer(c_int), value :: ir
    end subroutine VDLOG10_Idx
    ! Power
    subroutine VDPOW(n, a, b, r) bind(C, name="VDPOW")
      import :: c_int, c_double
      integer(c_int), intent(in) :: n
      real(c_double), intent(in) :: a(*)
      real(c_double), intent(in) :: b(*)
      real(c_double), intent(inout) :: r(*)
    end subroutine VDPOW
    subroutine VDPOW_Idx(n, a, ia, b, ib, r, ir) bind(C, name="VDPOW_Idx")
      import :: c_int, c_double
      integer(c_int), intent(in) :: n
      real(c_double), intent(in) :: a(*)
      integer(c_int), value :: ia
      real(c_double), intent(in) :: b(*)
      integer(c_int), value :: ib
      real(c_double), intent(inout) :: r(*)
      integer(c_int), value :: ir
    end subroutine VDPOW_Idx
    subroutine VDPOWX(n, a, b, r) bind(C, name="VDPOWX")
      import :: c_int, c_double
      integer(c_int), intent(in) :: n
      real(c_double), intent(in) :: a(*)
      real(c_double), intent(in) :: b
      real(c_double), intent(inout) :: r(*)
    end subroutine VDPOWX
    subroutine VDPOWX_Idx(n, a, ia, b, r, ir) bind(C, name="VDPOWX_Idx")
      import :: c_int, c_double
      integer(c_int), intent(in) :: n
      real(c_double), intent(in) :: a(*)
      integer(c_int), value :: ia
      real(c_double), intent(in) :: b
      real(c_double), intent(inout) :: r(*)
      integer(c_int), value :: ir
    end subroutine VDPOWX_Idx
    ! Trigonometric
    subroutine VDSIN(n, a, r) bind(C, name="VDSIN")
      import :: c_int, c_double
      integer(c_int), intent(in) :: n
      real(c_double), intent(in) :: a(*)
      real(c_double), intent(inout) :: r(*)
    end subroutine VDSIN
    subroutine VDSIN_Idx(n, a, ia, r, ir) bind(C, name="VDSIN_Idx")
      import :: c_int, c_double
      integer(c_int), intent(in) :: n
      real(c_double), intent(in) :: a(*)
      integer(c_int), value :: ia
      real(c_double), intent(inout) :: r(*)
      integer(c_int), value :: ir
    end subroutine VDSIN_Idx
    subroutine VDCOS(n, a, r) bind(C, name="VDCOS")
      import :: c_int, c_double
      integer(c_int), intent(in) :: n
      real(c_double), intent(in) :: a(*)
      real(c_double), intent(inout) :: r(*)
    end subroutine VDCOS
    subroutine VDCOS_Idx(n, a, ia, r, ir) bind(C, name="VDCOS_Idx")
      import :: c_int, c_double
      integer(c_int), intent(in) :: n
      real(c_double), intent(in) :: a(*)
      integer(c_int), value :: ia
      real(c_double), intent(inout) :: r(*)
      integer(c_int), value :: ir
    end subroutine VDCOS_Idx
    subroutine VDASIN(n, a, r) bind(C, name="VDASIN")
      import :: c_int, c_double
      integer(c_int), intent(in) :: n
      real(c_double), intent(in) :: a(*)
      real(c_double), intent(inout) :: r(*)
    end subroutine VDASIN
    subroutine VDASIN_Idx(n, a, ia, r, ir) bind(C, name="VDASIN_Idx")
      import :: c_int, c_double
      integer(c_int), intent(in) :: n
      real(c_double), intent(in) :: a(*)
      integer(c_int), value :: ia
      real(c_double), intent(inout) :: r(*)
      integer(c_int), value :: ir
    end subroutine VDASIN_Idx
    subroutine VDACOS(n, a, r) bind(C, name="VDACOS")
      import :: c_int, c_double
      integer(c_int), intent(in) :: n
      real(c_double), intent(in) :: a(*)
      real(c_double), intent(inout) :: r(*)
    end subroutine VDACOS
    subroutine VDACOS_Idx(n, a, ia, r, ir) bind(C, name="VDACOS_Idx")
      import :: c_int, c_double
      integer(c_int), intent(in) :: n
      real(c_double), intent(in) :: a(*)
      integer(c_int), value :: ia
      real(c_double), intent(inout) :: r(*)
      integer(c_int), value :: ir
    end subroutine VDACOS_Idx
    subroutine VDATAN(n, a, r) bind(C, name="VDATAN")
      import :: c_int, c_double
      integer(c_int), intent(in) :: n
      real(c_double), intent(in) :: a(*)
      real(c_double), intent(inout) :: r(*)
    end subroutine VDATAN
    subroutine VDATAN_Idx(n, a, ia, r, ir) bind(C, name="VDATAN_Idx")
      import :: c_int, c_double
      integer(c_int), intent(in) :: n
      real(c_double), intent(in) :: a(*)
      integer(c_int), value :: ia
      real(c_double), intent(inout) :: r(*)
      integer(c_int), value :: ir
    end subroutine VDATAN_Idx
    subroutine VDATAN2(n, a, b, r) bind(C, name="VDATAN2")
      import :: c_int, c_double
      integer(c_int), intent(in) :: n
      real(c_double), intent(in) :: a(*)
      real(c_double), intent(in) :: b(*)
      real(c_double), intent(inout) :: r(*)
    end subroutine VDATAN2
    subroutine VDATAN2_Idx(n, a, ia, b, ib, r, ir) bind(C, name="VDATAN2_Idx")
      import :: c_int, c_double
      integer(c_int), intent(in) :: n
      real(c_double), intent(in) :: a(*)
      integer(c_int), value :: ia
      real(c_double), intent(in) :: b(*)
      integer(c_int), value :: ib
      real(c_double), intent(inout) :: r(*)
      integer(c_int), value :: ir
    end subroutine VDATAN2_Idx
    ! Error functions
    subroutine VDERF(n, a, r) bind(C, name="VDERF")
      import :: c_int, c_double
      integer(c_int), intent(in) :: n
      real(c_double), intent(in) :: a(*)
      real(c_double), intent(inout) :: r(*)
    end subroutine VDERF
    subroutine VDERF_Idx(n, a, ia, r, ir) bind(C, name="VDERF_Idx")
      import :: c_int, c_double
      integer(c_int), intent(in) :: n
      real(c_double), intent(in) :: a(*)
      integer(c_int), value :: ia
      real(c_double), intent(inout) :: r(*)
      integer(c_int), value :: ir
    end subroutine VDERF_Idx
    subroutine VDERFC(n, a, r) bind(C, name="VDERFC")
      import :: c_int, c_double
      integer(c_int), intent(in) :: n
      real(c_double), intent(in) :: a(*)
      real(c_double), intent(inout) :: r(*)
    end subroutine VDERFC
    subroutine VDERFC_Idx(n, a, ia, r, ir) bind(C, name="VDERFC_Idx")
      import :: c_int, c_double
      integer(c_int), intent(in) :: n
      real(c_double), intent(in) :: a(*)
      integer(c_int), value :: ia
      real(c_double), intent(inout) :: r(*)
      integer(c_int), value :: ir
    end subroutine VDERFC_Idx
    subroutine VDERFINV(n, a, r) bind(C, name="VDERFINV")
      import :: c_int, c_double
      integer(c_int), intent(in) :: n
      real(c_double), intent(in) :: a(*)
      real(c_double), intent(inout) :: r(*)
    end subroutine VDERFINV
    subroutine VDERFINV_Idx(n, a, ia, r, ir) bind(C, name="VDERFINV_Idx")
      import :: c_int, c_double
      integer(c_int), intent(in) :: n
      real(c_double), intent(in) :: a(*)
      integer(c_int), value :: ia
      real(c_double), intent(inout) :: r(*)
      integer(c_int), value :: ir
    end subroutine VDERFINV_Idx
    ! Trigonometric
    subroutine VDTAN(n, a, r) bind(C, name="VDTAN")
      import :: c_int, c_double
      integer(c_int), intent(in) :: n
      real(c_double), intent(in) :: a(*)
      real(c_double), intent(inout) :: r(*)
    end subroutine VDTAN
    subroutine VDTAN_Idx(n, a, ia, r, ir) bind(C, name="VDTAN_Idx")
      import :: c_int, c_double
      integer(c_int), intent(in) :: n
      real(c_double), intent(in) :: a(*)
      integer(c_int), value :: ia
      real(c_double), intent(inout) :: r(*)
      integer(c_int), value :: ir
    end subroutine VDTAN_Idx
    subroutine VDSINCOS(n, a, y, z) bind(C, name="VDSINCOS")
      import :: c_int, c_double
      integer(c_int), intent(in) :: n
      real(c_double), intent(in) :: a(*)
      real(c_double), intent(inout) :: y(*)
      real(c_double), intent(inout) :: z(*)
    end subroutine VDSINCOS
    subroutine VDSINCOS_Idx(n, a, ia, y, iy, z, iz) bind(C, name="VDSINCOS_Idx")
      import :: c_int, c_double
      integer(c_int), intent(in) :: n
      real(c_double), intent(in) :: a(*)
      integer(c_int), value :: ia
      real(c_double), intent(inout) :: y(*)
      integer(c_int), value :: iy
      real(c_double), intent(inout) :: z(*)
      integer(c_int), value :: iz
    end subroutine VDSINCOS_Idx
    ! Hyperbolic
    subroutine VDSINH(n, a, r) bind(C, name="VDSINH")
      import :: c_int, c_double
      integer(c_int), intent(in) :: n
      real(c_double), intent(in) :: a(*)
      real(c_double), intent(inout) :: r(*)
    end subroutine VDSINH
    subroutine VDSINH_Idx(n, a, ia, r, ir) bind(C, name="VDSINH_Idx")
      import :: c_int, c_double
      integer(c_int), intent(in) :: n
      real(c_double), intent(in) :: a(*)
      integer(c_int), value :: ia
      real(c_double), intent(inout) :: r(*)
      integer(c_int), value :: ir
    end subroutine VDSINH_Idx
    subroutine VDCOSH(n, a, r) bind(C, name="VDCOSH")
      import :: c_int, c_double
      integer(c_int), intent(in) :: n
      real(c_double), intent(in) :: a(*)
      real(c_double), intent(inout) :: r(*)
    end subroutine VDCOSH
    subroutine VDCOSH_Idx(n, a, ia, r, ir) bind(C, name="VDCOSH_Idx")
      import :: c_int, c_double
      integer(c_int), intent(in) :: n
      real(c_double), intent(in) :: a(*)
      integer(c_int), value :: ia
      real(c_double), intent(inout) :: r(*)
      integer(c_int), value :: ir
    end subroutine VDCOSH_Idx
    subroutine VDTANH(n, a, r) bind(C, name="VDTANH")
      import :: c_int, c_double
      integer(c_int), intent(in) :: n
      real(c_double), intent(in) :: a(*)
      real(c_double), intent(inout) :: r(*)
    end subroutine VDTANH
    subroutine VDTANH_Idx(n, a, ia, r, ir) bind(C, name="VDTANH_Idx")
      import :: c_int, c_double
      integer(c_int), intent(in) :: n
      real(c_double), intent(in) :: a(*)
      integer(c_int), value :: ia
      real(c_double), intent(inout) :: r(*)
      integer(c_int), value :: ir
    end subroutine VDTANH_Idx
    subroutine VDACOSH(n, a, r) bind(C, name="VDACOSH")
      import :: c_int, c_double
      integer(c_int), intent(in) :: n
      real(c_double), intent(in) :: a(*)
      real(c_double), intent(inout) :: r(*)
    end subroutine VDACOSH
    subroutine VDACOSH_Idx(n, a, ia, r, ir) bind(C, name="VDACOSH_Idx")
      import :: c_int, c_double
      integer(c_int), intent(in) :: n
      real(c_double), intent(in) :: a(*)
      integer(c_int), value :: ia
      real(c_double), intent(inout) :: r(*)
      integer(c_int), value :: ir
    end subroutine VDACOSH_Idx
    subroutine VDASINH(n, a, r) bind(C, name="VDASINH")
      import :: c_int, c_double
      integer(c_int), intent(in) :: n
      real(c_double), intent(in) :: a(*)
      real(c_double), intent(inout) :: r(*)
    end subroutine VDASINH
    subroutine VDASINH_Idx(n, a, ia, r, ir) bind(C, name="VDASINH_Idx")
      import :: c_int, c_double
      integer(c_int), intent(in) :: n
      real(c_double), intent(in) :: a(*)
      integer(c_int), value :: ia
      real(c_double), intent(inout) :: r(*)
      integer(c_int), value :: ir
    end subroutine VDASINH_Idx
    subroutine VDATANH(n, a, r) bind(C, name="VDATANH")
      import :: c_int, c_double
      integer(c_int), intent(in) :: n
      real(c_double), intent(in) :: a(*)
      real(c_double), intent(inout) :: r(*)
    end subroutine VDATANH
    subroutine VDATANH_Idx(n, a, ia, r, ir) bind(C, name="VDATANH_Idx")
      import :: c_int, c_double
      integer(c_int), intent(in) :: n
      real(c_double), intent(in) :: a(*)
      integer(c_int), value :: ia
      real(c_double), intent(inout) :: r(*)
      integer(c_int), value :: ir
    end subroutine VDATANH_Idx
    ! Rounding to integers
    subroutine VDCEIL(n, a, r) bind(C, name="VDCEIL")
      import :: c_int, c_double
      integer(c_int), intent(in) :: n
      real(c_double), intent(in) :: a(*)
      real(c_double), intent(inout) :: r(*)
    end subroutine VDCEIL
    subroutine VDCEIL_Idx(n, a, ia, r, ir) bind(C, name="VDCEIL_Idx")
      import :: c_int, c_double
      integer(c_int), intent(in) :: n
      real(c_double), intent(in) :: a(*)
      integer(c_int), value :: ia
      real(c_double), intent(inout) :: r(*)
      integer(c_int), value :: ir
    end subroutine VDCEIL_Idx
    subroutine VDFLOOR(n, a, r) bind(C, name="VDFLOOR")
      import :: c_int, c_double
      integer(c_int), intent(in) :: n
      real(c_double), intent(in) :: a(*)
      real(c_double), intent(inout) :: r(*)
    end subroutine VDFLOOR
    subroutine VDFLOOR_Idx(n, a, ia, r, ir) bind(C, name="VDFLOOR_Idx")
      import :: c_int, c_double
      integer(c_int), intent(in) :: n
      real(c_double), intent(in) :: a(*)
      integer(c_int), value :: ia
      real(c_double), intent(inout) :: r(*)
      integer(c_int), value :: ir
    end subroutine VDFLOOR_Idx
    subroutine VDTRUNC(n, a, r) bind(C, name="VDTRUNC")
      import :: c_int, c_double
      integer(c_int), intent(in) :: n
      real(c_double), intent(in) :: a(*)
      real(c_double), intent(inout) :: r(*)
    end subroutine VDTRUNC
    subroutine VDTRUNC_Idx(n, a, ia, r, ir) bind(C, name="VDTRUNC_Idx")
      import :: c_int, c_double
      integer(c_int), intent(in) :: n
      real(c_double), intent(in) :: a(*)
      integer(c_int), value :: ia
      real(c_double), intent(inout) :: r(*)
      integer(c_int), value :: ir
    end subroutine VDTRUNC_Idx
    subroutine VDROUND(n, a, r) bind(C, name="VDROUND")
      import :: c_int, c_double
      integer(c_int), intent(in) :: n
      real(c_double), intent(in) :: a(*)
      real(c_double), intent(inout) :: r(*)
    end subroutine VDROUND
    subroutine VDROUND_Idx(n, a, ia, r, ir) bind(C, name="VDROUND_Idx")
      import :: c_int, c_double
      integer(c_int), intent(in) :: n
      real(c_double), intent(in) :: a(*)
      integer(c_int), value :: ia
      real(c_double), intent(inout) :: r(*)
      integer(c_int), value :: ir
    end subroutine VDROUND_Idx
    subroutine VDRINT(n, a, r) bind(C, name="VDRINT")
      import :: c_int, c_double
      integer(c_int), intent(in) :: n
      real(c_double), intent(in) :: a(*)
      real(c_double), intent(inout) :: r(*)
    end subroutine VDRINT
    subroutine VDRINT_Idx(n, a, ia, r, ir) bind(C, name="VDRINT_Idx")
      import :: c_int, c_double
      integer(c_int), intent(in) :: n
      real(c_double), intent(in) :: a(*)
      integer(c_int), value :: ia
      real(c_double), intent(inout) :: r(*)
      integer(c_int), value :: ir
    end subroutine VDRINT_Idx
    subroutine VDNEARBYINT(n, a, r) bind(C, name="VDNEARBYINT")
      import :: c_int, c_double
      integer(c_int), intent(in) :: n
      real(c_double), intent(in) :: a(*)
      real(c_double), intent(inout) :: r(*)
    end subroutine VDNEARBYINT
    subroutine VDNEARBYINT_Idx(n, a, ia, r, ir) bind(C, name="VDNEARBYINT_Idx")
      import :: c_int, c_double
      integer(c_int), intent(in) :: n
      real(c_double), intent(in) :: a(*)
      integer(c_int), value :: ia
      real(c_double), intent(inout) :: r(*)
      integer(c_int), value :: ir
    end subroutine VDNEARBYINT_Idx
    subroutine VDMODF(n, a, y, z) bind(C, name="VDMODF")
      import :: c_int, c_double
      integer(c_int), intent(in) :: n
      real(c_double), intent(in) :: a(*)
      real(c_double), intent(inout) :: y(*)
      real(c_double), intent(inout) :: z(*)
    end subroutine VDMODF
    subroutine VDMODF_Idx(n, a, ia, y, iy, z, iz) bind(C, name="VDMODF_Idx")
      import :: c_int, c_double
      integer(c_int), intent(in) :: n
      real(c_double), intent(in) :: a(*)
      integer(c_int), value :: ia
      real(c_double), intent(inout) :: y(*)
      integer(c_int), value :: iy
      real(c_double), intent(inout) :: z(*)
      integer(c_int), value :: iz
    end subroutine VDMODF_Idx
    ! Complex functions
    subroutine VZSQRT(n, a, r) bind(C, name="VZSQRT")
      import :: c_int, c_double_complex
      integer(c_int), intent(in) :: n
      complex(c_double_complex), intent(in) :: a(*)
      complex(c_double_complex), intent(inout) :: r(*)
    end subroutine VZSQRT
    subroutine VZSQRT_Idx(n, a, ia, r, ir) bind(C, name="VZSQRT_Idx")
      import :: c_int, c_double_complex
      integer(c_int), intent(in) :: n
      complex(c_double_complex), intent(in) :: a(*)
      integer(c_int), value :: ia
      complex(c_double_complex), intent(inout) :: r(*)
      integer(c_int), value :: ir
    end subroutine VZSQRT_Idx
    subroutine VZPOW(n, a, b, r) bind(C, name="VZPOW")
      import :: c_int, c_double_complex
      integer(c_int), intent(in) :: n
      complex(c_double_complex), intent(in) :: a(*)
      complex(c_double_complex), intent(in) :: b(*)
      complex(c_double_complex), intent(inout) :: r(*)
    end subroutine VZPOW
    subroutine VZPOW_Idx(n, a, ia, b, ib, r, ir) bind(C, name="VZPOW_Idx")
      import :: c_int, c_double_complex
      integer(c_int), intent(in) :: n
      complex(c_double_complex), intent(in) :: a(*)
      integer(c_int), value :: ia
      complex(c_double_complex), intent(in) :: b(*)
      integer(c_int), value :: ib
      complex(c_double_complex), intent(inout) :: r(*)
      integer(c_int), value :: ir
    end subroutine VZPOW_Idx
    subroutine VZPOWX(n, a, b, r) bind(C, name="VZPOWX")
      import :: c_int, c_double_complex
      integer(c_int), intent(in) :: n
      complex(c_double_complex), intent(in) :: a(*)
      complex(c_double_complex), intent(in) :: b
      complex(c_double_complex), intent(inout) :: r(*)
    end subroutine VZPOWX
    subroutine VZPOWX_Idx(n, a, ia, b, r, ir) bind(C, name="VZPOWX_Idx")
      import :: c_int, c_double_complex
      integer(c_int), intent(in) :: n
      complex(c_double_complex), intent(in) :: a(*)
      integer(c_int), value :: ia
      complex(c_double_complex), intent(in) :: b
      complex(c_double_complex), intent(inout) :: r(*)
      integer(c_int), value :: ir
    end subroutine VZPOWX_Idx
    subroutine VZEXP(n, a, r) bind(C, name="VZEXP")
      import :: c_int, c_double_complex
      integer(c_int), intent(in) :: n
      complex(c_double_complex), intent(in) :: a(*)
      complex(c_double_complex), intent(inout) :: r(*)
    end subroutine VZEXP
    subroutine VZEXP_Idx(n, a, ia, r, ir) bind(C, name="VZEXP_Idx")
      import :: c_int, c_double_complex
      integer(c_int), intent(in) :: n
      complex(c_double_complex), intent(in) :: a(*)
      integer(c_int), value :: ia
      complex(c_double_complex), intent(inout) :: r(*)
      integer(c_int), value :: ir
    end subroutine VZEXP_Idx
    subroutine VZLN(n, a, r) bind(C, name="VZLN")
      import :: c_int, c_double_complex
      integer(c_int), intent(in) :: n
      complex(c_double_complex), intent(in) :: a(*)
      complex(c_double_complex), intent(inout) :: r(*)
    end subroutine VZLN
    subroutine VZLN_Idx(n, a, ia, r, ir) bind(C, name="VZLN_Idx")
      import :: c_int, c_double_complex
      integer(c_int), intent(in) :: n
      complex(c_double_complex), intent(in) :: a(*)
      integer(c_int), value :: ia
      complex(c_double_complex), intent(inout) :: r(*)
      integer(c_int), value :: ir
    end subroutine VZLN_Idx
    subroutine VZLOG10(n, a, r) bind(C, name="VZLOG10")
      import :: c_int, c_double_complex
      integer(c_int), intent(in) :: n
      complex(c_double_complex), intent(in) :: a(*)
      complex(c_double_complex), intent(inout) :: r(*)
    end subroutine VZLOG10
    subroutine VZLOG10_Idx(n, a, ia, r, ir) bind(C, name="VZLOG10_Idx")
      import :: c_int, c_double_complex
      integer(c_int), intent(in) :: n
      complex(c_double_complex), intent(in) :: a(*)
      integer(c_int), value :: ia
      complex(c_double_complex), intent(inout) :: r(*)
      integer(c_int), value :: ir
    end subroutine VZLOG10_Idx
    subroutine VZCOS(n, a, r) bind(C, name="VZCOS")
      import :: c_int, c_double_complex
      integer(c_int), intent(in) :: n
      complex(c_double_complex), intent(in) :: a(*)
      complex(c_double_complex), intent(inout) :: r(*)
    end subroutine VZCOS
    subroutine VZCOS_Idx(n, a, ia, r, ir) bind(C, name="VZCOS_Idx")
      import :: c_int, c_double_complex
      integer(c_int), intent(in) :: n
      complex(c_double_complex), intent(in) :: a(*)
      integer(c_int), value :: ia
      complex(c_double_complex), intent(inout) :: r(*)
      integer(c_int), value :: ir
    end subroutine VZCOS_Idx
    subroutine VZSIN(n, a, r) bind(C, name="VZSIN")
      import :: c_int, c_double_complex
      integer(c_int), intent(in) :: n
      complex(c_double_complex), intent(in) :: a(*)
      complex(c_double_complex), intent(inout) :: r(*)
    end subroutine VZSIN
    subroutine VZSIN_Idx(n, a, ia, r, ir) bind(C, name="VZSIN_Idx")
      import :: c_int, c_double_complex
      integer(c_int), intent(in) :: n
      complex(c_double_complex), intent(in) :: a(*)
      integer(c_int), value :: ia
      complex(c_double_complex), intent(inout) :: r(*)
      integer(c_int), value :: ir
    end subroutine VZSIN_Idx
    subroutine VZTAN(n, a, r) bind(C, name="VZTAN")
      import :: c_int, c_double_complex
      integer(c_int), intent(in) :: n
      complex(c_double_complex), intent(in) :: a(*)
      complex(c_double_complex), intent(inout) :: r(*)
    end subroutine VZTAN
    subroutine VZTAN_Idx(n, a, ia, r, ir) bind(C, name="VZTAN_Idx")
      import :: c_int, c_double_complex
      integer(c_int), intent(in) :: n
      complex(c_double_complex), intent(in) :: a(*)
      integer(c_int), value :: ia
      complex(c_double_complex), intent(inout) :: r(*)
      integer(c_int), value :: ir
    end subroutine VZTAN_Idx
    subroutine VZACOS(n, a, r) bind(C, name="VZACOS")
      import :: c_int, c_double_complex
      integer(c_int), intent(in) :: n
      complex(c_double_complex), intent(in) :: a(*)
      complex(c_double_complex), intent(inout) :: r(*)
    end subroutine VZACOS
    subroutine VZACOS_Idx(n, a, ia, r, ir) bind(C, name="VZACOS_Idx")
      import :: c_int, c_double_complex
      integer(c_int), intent(in) :: n
      complex(c_double_complex), intent(in) :: a(*)
      integer(c_int), value :: ia
      complex(c_double_complex), intent(inout) :: r(*)
      integer(c_int), value :: ir
    end subroutine VZACOS_Idx
    subroutine VZASIN(n, a, r) bind(C, name="VZASIN")
      import :: c_int, c_double_complex
      integer(c_int), intent(in) :: n
      complex(c_double_complex), intent(in) :: a(*)
      complex(c_double_complex), intent(inout) :: r(*)
    end subroutine VZASIN
    subroutine VZASIN_Idx(n, a, ia, r, ir) bind(C, name="VZASIN_Idx")
      import :: c_int, c_double_complex
      integer(c_int), intent(in) :: n
      complex(c_double_complex), intent(in) :: a(*)
      integer(c_int), value :: ia
      complex(c_double_complex), intent(inout) :: r(*)
      integer(c_int), value :: ir
    end subroutine VZASIN_Idx
    subroutine VZATAN(n, a, r) bind(C, name="VZATAN")
      import :: c_int, c_double_complex
      integer(c_int), intent(in) :: n
      complex(c_double_complex), intent(in) :: a(*)
      complex(c_double_complex), intent(inout) :: r(*)
    end subroutine VZATAN
    subroutine VZATAN_Idx(n, a, ia, r, ir) bind(C, name="VZATAN_Idx")
      import :: c_int, c_double_complex
      integer(c_int), intent(in) :: n
      complex(c_double_complex), intent(in) :: a(*)
      integer(c_int), value :: ia
      complex(c_double_complex), intent(inout) :: r(*)
      integer(c_int), value :: ir
    end subroutine VZATAN_Idx
    subroutine VZCOSH(n, a, r) bind(C, name="VZCOSH")
      import :: c_int, c_double_complex
      integer(c_int), intent(in) :: n
      complex(c_double_complex), intent(in) :: a(*)
      complex(c_double_complex), intent(inout) :: r(*)
    end subroutine VZCOSH
    subroutine VZCOSH_Idx(n, a, ia, r, ir) bind(C, name="VZCOSH_Idx")
      import :: c_int, c_double_complex
      integer(c_int), intent(in) :: n
      complex(c_double_complex), intent(in) :: a(*)
      integer(c_int), value :: ia
      complex(c_double_complex), intent(inout) :: r(*)
      integer(c_int), value :: ir
    end subroutine VZCOSH_Idx
    subroutine VZSINH(n, a, r) bind(C, name="VZSINH")
      import :: c_int, c_double_complex
      integer(c_int), intent(in) :: n
      complex(c_double_complex), intent(in) :: a(*)
      complex(c_double_complex), intent(inout) :: r(*)
    end subroutine VZSINH
    subroutine VZSINH_Idx(n, a, ia, r, ir) bind(C, name="VZSINH_Idx")
      import :: c_int, c_double_complex
      integer(c_int), intent(in) :: n
      complex(c_double_complex), intent(in) :: a(*)
      integer(c_int), value :: ia
      complex(c_double_complex), intent(inout) :: r(*)
      integer(c_int), value :: ir
    end subroutine VZSINH_Idx
    subroutine VZTANH(n, a, r) bind(C, name="VZTANH")
      import :: c_int, c_double_complex
      integer(c_int), intent(in) :: n
      complex(c_double_complex), intent(in) :: a(*)
      complex(c_double_complex), intent(inout) :: r(*)
    end subroutine VZTANH
    subroutine VZTANH_Idx(n, a, ia, r, ir) bind(C, name="VZTANH_Idx")
      import :: c_int, c_double_complex
      integer(c_int), intent(in) :: n
      complex(c_double_complex), intent(in) :: a(*)
      integer(c_int), value :: ia
      complex(c_double_complex), intent(inout) :: r(*)
      integer(c_int), value :: ir
    end subroutine VZTANH_Idx
    subroutine VZACOSH(n, a, r) bind(C, name="VZACOSH")
      import :: c_int, c_double_complex
      integer(c_int), intent(in) :: n
      complex(c_double_complex), intent(in) :: a(*)
      complex(c_double_complex), intent(inout) :: r(*)
    end subroutine VZACOSH
    subroutine VZACOSH_Idx(n, a, ia, r, ir) bind(C, name="VZACOSH_Idx")
      import :: c_int, c_double_complex
      integer(c_int), intent(in) :: n
      complex(c_double_complex), intent(in) :: a(*)
      integer(c_int), value :: ia
      complex(c_double_complex), intent(inout) :: r(*)
      integer(c_int), value :: ir
    end subroutine VZACOSH_Idx
    subroutine VZASINH(n, a, r) bind(C, name="VZASINH")
      import :: c_int, c_double_complex
      integer(c_int), intent(in) :: n
      complex(c_double_complex), intent(in) :: a(*)
      complex(c_double_complex), intent(inout) :: r(*)
    end subroutine VZASINH
    subroutine VZASINH_Idx(n, a, ia, r, ir) bind(C, name="VZASINH_Idx")
      import :: c_int, c_double_complex
      integer(c_int), intent(in) :: n
      complex(c_double_complex), intent(in) :: a(*)
      integer(c_int), value :: ia
      complex(c_double_complex), intent(inout) :: r(*)
      integer(c_int), value :: ir
    end subroutine VZASINH_Idx
    subroutine VZATANH(n, a, r) bind(C, name="VZATANH")
      import :: c_int, c_double_complex
      integer(c_int), intent(in) :: n
      complex(c_double_complex), intent(in) :: a(*)
      complex(c_double_complex), intent(inout) :: r(*)
    end subroutine VZATANH
    subroutine VZATANH_Idx(n, a, ia, r, ir) bind(C, name="VZATANH_Idx")
      import :: c_int, c_double_complex
      integer(c_int), intent(in) :: n
      complex(c_double_complex), intent(in) :: a(*)
      integer(c_int), value :: ia
      complex(c_double_complex), intent(inout) :: r(*)
      integer(c_int), value :: ir
    end subroutine VZATANH_Idx
  end interface
end module zvl
