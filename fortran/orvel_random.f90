! fortran/orvel_random.f90 - interfaces of the uniform random numbers
module orvel_random
  use, intrinsic :: iso_fortran_env, only: int64
  implicit none
  public

  interface
    subroutine rnun(nr, r)
      integer, intent(in) :: nr
      real, intent(inout) :: r(*)
    end subroutine rnun
    subroutine drnun(nr, r)
      integer, intent(in) :: nr
      double precision, intent(inout) :: r(*)
    end subroutine drnun
    real function rnunf()
    end function rnunf
    double precision function drnunf()
    end function drnunf
    subroutine rnopt(iopt)
      integer, intent(in) :: iopt
    end subroutine rnopt
    subroutine rnopg(iopt)
      integer, intent(inout) :: iopt
    end subroutine rnopg
    subroutine rnset(iseed)
      integer, intent(in) :: iseed
    end subroutine rnset
    subroutine rnget(iseed)
      integer, intent(inout) :: iseed
    end subroutine rnget
    subroutine rnisd(iseed1, iseed2)
      integer, intent(in) :: iseed1
      integer, intent(inout) :: iseed2
    end subroutine rnisd
    subroutine rnges(table)
      real, intent(inout) :: table(128)
    end subroutine rnges
    subroutine rnses(table)
      real, intent(in) :: table(128)
    end subroutine rnses
    subroutine drnges(table)
      double precision, intent(inout) :: table(128)
    end subroutine drnges
    subroutine drnses(table)
      double precision, intent(in) :: table(128)
    end subroutine drnses
    subroutine rngef(iarray)
      integer, intent(inout) :: iarray(1565)
    end subroutine rngef
    subroutine rnsef(iarray)
      integer, intent(in) :: iarray(1565)
    end subroutine rnsef
    subroutine rnge32(mtable)
      integer, intent(inout) :: mtable(625)
    end subroutine rnge32
    subroutine rnse32(mtable)
      integer, intent(in) :: mtable(625)
    end subroutine rnse32
    subroutine rnin32(key, len)
      integer, intent(in) :: len
      integer, intent(in) :: key(*)
    end subroutine rnin32
    subroutine rnge64(mtable)
      import :: int64
      integer(int64), intent(inout) :: mtable(313)
    end subroutine rnge64
    subroutine rnse64(mtable)
      import :: int64
      integer(int64), intent(in) :: mtable(313)
    end subroutine rnse64
    subroutine rnin64(key, len)
      import :: int64
      integer, intent(in) :: len
      integer(int64), intent(in) :: key(*)
    end subroutine rnin64
    subroutine r1int(iarg)
      integer, intent(in) :: iarg
    end subroutine r1int
    subroutine r1clk(iseed)
      integer, intent(inout) :: iseed
    end subroutine r1clk
    subroutine r1ins()
    end subroutine r1ins
    subroutine dr1ins()
    end subroutine dr1ins
    subroutine r1inf()
    end subroutine r1inf
    subroutine r1in32(iseed)
      integer, intent(in) :: iseed
    end subroutine r1in32
    subroutine r1in64(iseed)
      integer, intent(in) :: iseed
    end subroutine r1in64
    subroutine r1t32(nr, r)
      integer, intent(in) :: nr
      real, intent(inout) :: r(*)
    end subroutine r1t32
    subroutine r1t64(nr, r)
      integer, intent(in) :: nr
      real, intent(inout) :: r(*)
    end subroutine r1t64
    subroutine dr1t32(nr, r)
      integer, intent(in) :: nr
      double precision, intent(inout) :: r(*)
    end subroutine dr1t32
    subroutine dr1t64(nr, r)
      integer, intent(in) :: nr
      double precision, intent(inout) :: r(*)
    end subroutine dr1t64
  end interface
end module orvel_random
