! fortran/amach_int.f90 - machine constants in the precision of the variable they are assigned to
!
!     use amach_int
!     double precision :: eps
!     eps = amach(4)
module amach_int
  use, intrinsic :: iso_c_binding, only: c_int32_t
  implicit none
  private
  public :: floating_point, amach, s_amach, d_amach, assignment(=)

  type, bind(c) :: floating_point
    integer(c_int32_t) :: n
  end type floating_point

  interface amach
    function amach_deferred(n) bind(c, name="AMACH_INT_mp_AMACH") result(value)
      import :: floating_point, c_int32_t
      integer(c_int32_t), intent(in) :: n
      type(floating_point) :: value
    end function amach_deferred
  end interface amach

  interface assignment(=)
    subroutine real_eq_floating_point(x, value) bind(c, name="AMACH_INT_mp_REAL_EQ_FLOATING_POINT")
      import :: floating_point
      real, intent(out) :: x
      type(floating_point), intent(in) :: value
    end subroutine real_eq_floating_point
    subroutine double_eq_floating_point(x, value) bind(c, name="AMACH_INT_mp_DOUBLE_EQ_FLOATING_POINT")
      import :: floating_point
      double precision, intent(out) :: x
      type(floating_point), intent(in) :: value
    end subroutine double_eq_floating_point
  end interface assignment(=)

  interface
    real function s_amach(n) bind(c, name="AMACH_INT_mp_S_AMACH")
      import :: c_int32_t
      integer(c_int32_t), intent(in) :: n
    end function s_amach
    double precision function d_amach(n) bind(c, name="AMACH_INT_mp_D_AMACH")
      import :: c_int32_t
      integer(c_int32_t), intent(in) :: n
    end function d_amach
  end interface
end module amach_int
